#include "COrmProcessNotifier.h"

COrmProcessNotifier::COrmProcessNotifier(QObject* pParent) : QObject(pParent) {}
