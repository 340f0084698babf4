#pragma once

#include <QString>

/// Whether windows can be shown, asked without risk: Qt ends a process that finds no display, so another process tries it. That one stays
/// as long as this object lives: a display server that loses its last program may start anew and turn the next one away.
class COrmDisplayCheck
{
public:
    /// With the arguments of the program. To be made before there is an application object or a second thread.
    COrmDisplayCheck(int nArguments, char** ppArguments);
    ~COrmDisplayCheck();
    COrmDisplayCheck(const COrmDisplayCheck&) = delete;
    COrmDisplayCheck& operator=(const COrmDisplayCheck&) = delete;

    /// Why there is no display, in one line; empty: there is one.
    QString refusal() const { return m_strRefusal; }

private:
    QString m_strRefusal;
    int m_nProcess = -1; ///< that has the display
};
