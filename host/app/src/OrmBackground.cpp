#include "OrmBackground.h"

#include <system_error>
#include <thread>

bool OrmBackground::run(const std::function<void()>& fnWork)
{
    try
    {
        std::thread(fnWork).detach();
    }
    catch (const std::system_error&)
    {
        return false;
    }
    return true;
}
