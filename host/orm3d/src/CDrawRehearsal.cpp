#include "CDrawRehearsal.h"

int CDrawRehearsal::s_nUnderWay = 0;
