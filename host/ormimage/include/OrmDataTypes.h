#pragma once

/// Pixel types of images. The numbers are part of the host's interface: never renumber.
enum OrmDataTypes : int
{
    ORM_DATA_UINT8 = 0,
    ORM_DATA_INT16 = 1,
    ORM_DATA_UINT16 = 2,
    ORM_DATA_INT32 = 3,
    ORM_DATA_FLOAT32 = 4,
    ORM_DATA_FLOAT64 = 5
};

/// Bytes of one pixel; 0 for an unknown type.
int ormBytesPerPixel(OrmDataTypes eType);
