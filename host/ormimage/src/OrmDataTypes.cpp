#include "OrmDataTypes.h"

int ormBytesPerPixel(OrmDataTypes eType)
{
    switch (eType)
    {
    case ORM_DATA_UINT8:
        return 1;
    case ORM_DATA_INT16:
    case ORM_DATA_UINT16:
        return 2;
    case ORM_DATA_INT32:
    case ORM_DATA_FLOAT32:
        return 4;
    case ORM_DATA_FLOAT64:
        return 8;
    }
    return 0;
}
