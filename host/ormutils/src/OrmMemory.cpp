#include "OrmMemory.h"

#include <malloc.h>

void OrmMemory::giveBack()
{
    malloc_trim(0);
}
