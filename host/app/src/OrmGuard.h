#pragma once

#include <QString>
#include <exception>
#include <utility>

/// The boundary between the host and code that is not its own.
namespace OrmGuard
{
/// Logs that @p strWhat failed with @p pReason, which may be null, and returns the sentence.
QString reportFailure(const QString& strWhat, const char* pReason);

/// Calls @p fnCall and lets no exception out. False, with a line in the log, when one was stopped.
template <typename Fn>
bool run(const QString& strWhat, Fn&& fnCall, QString* pstrReason = nullptr)
{
    QString strReason;
    try
    {
        std::forward<Fn>(fnCall)();
        return true;
    }
    catch (const std::exception& objError)
    {
        strReason = reportFailure(strWhat, objError.what());
    }
    catch (...)
    {
        strReason = reportFailure(strWhat, nullptr);
    }
    if (pstrReason != nullptr)
        *pstrReason = strReason;
    return false;
}
} // namespace OrmGuard
