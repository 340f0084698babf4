#include "ChildSetup.h"

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

void ChildSetup::endWithParent(pid_t nParent)
{
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != nParent)
    {
        ::_exit(1); // the parent was faster
    }
    ::setpgid(0, 0);
    sigset_t setNone;
    ::sigemptyset(&setNone);
    ::sigprocmask(SIG_SETMASK, &setNone, nullptr);
}
