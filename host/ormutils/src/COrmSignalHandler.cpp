#include "COrmSignalHandler.h"

COrmSignalHandler::COrmSignalHandler(QObject* pParent) : QObject(pParent) {}
