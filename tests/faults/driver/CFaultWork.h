#pragma once

#include "OrmFaults.h"

#include <QString>

#include <memory>

/// A piece of work that is done again and again while one call of it fails, each time another one.
class CFaultWork
{
public:
    virtual ~CFaultWork() = default;

    /// Puts everything in place. Nothing fails here, nor in wrongOutcome().
    virtual void prepare() = 0;
    /// The work. Whatever it throws is wrong.
    virtual void run() = 0;
    /// What is wrong with what it left, empty if nothing is.
    /// @param sRun which call failed, if any
    virtual QString wrongOutcome(const OrmFaults::SPlan& sPlan, const OrmFaults::SRun& sRun) = 0;
    /// Whether the last run ended with a refusal.
    virtual bool isRefused() const = 0;

    /// Files below it count; empty: none do.
    virtual QByteArray folder() const { return QByteArray(); }
    /// Only allocations of so many bytes count, and QtGui's too; 0: all but those of QtGui.
    virtual std::size_t leastBytes() const { return 0; }

    /// The work of that name, "read-sola-1.0" for instance; null if there is none.
    static std::unique_ptr<CFaultWork> byName(const QString& strName);
};

/// The works of each source, by name; null if it has none of that name.
std::unique_ptr<CFaultWork> readingWork(const QString& strName);
std::unique_ptr<CFaultWork> documentWork(const QString& strName);
std::unique_ptr<CFaultWork> pressWork(const QString& strName);
std::unique_ptr<CFaultWork> writingWork(const QString& strName);
