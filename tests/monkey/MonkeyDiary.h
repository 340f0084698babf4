#pragma once

#include <QStringList>

/// What the monkey did last. Outlives a crash: the last entries go to the standard error output when the process dies of a signal, of a
/// sanitizer's finding, or of an event that has not ended after minutes.
namespace MonkeyDiary
{
/// Entries that are kept.
constexpr int s_nKept = 20;

/// Begins anew, and takes the process's deadly signals until end().
void begin(quint32 nSeed);
void end();
/// The next event. With ORM_MONKEY_ALOUD in the environment each goes to the standard error output when it is over. What does not fit into
/// an entry is cut off.
void write(const QString& strEvent);
/// Adds to the event that is under way.
void add(const QString& strText);
/// Each entry, whole, goes to the end of the list as soon as its event is over; none does with a null. begin() sets null.
void keepAll(QStringList* pEntries);
/// Number of the event under way, from 0.
int eventIndex();
/// Seed, number of the event and the last entries, one a line.
QString lastEntries();
} // namespace MonkeyDiary
