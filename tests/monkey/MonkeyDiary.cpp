#include "MonkeyDiary.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <unistd.h>

// Plain arrays of characters: a signal handler may touch nothing else.

/// Only there in a build with sanitizers, which named it.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" void __attribute__((weak)) __sanitizer_set_death_callback(void (*pCallback)());

namespace
{
constexpr int s_nEntryBytes = 400;
/// An event that takes longer hangs. Far above what a slow machine needs.
constexpr unsigned s_nEventSeconds = 300;

using Entry = std::array<char, s_nEntryBytes>;
std::array<Entry, MonkeyDiary::s_nKept> s_aEntries;
int s_nEvents = 0;
QStringList* s_pAll = nullptr;
std::array<char, 64> s_acSeed;

constexpr std::array<int, 6> s_anSignals = {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS, SIGALRM};
std::array<struct sigaction, 6> s_aBefore;

Entry& entry(int nEvent)
{
    return s_aEntries[static_cast<std::size_t>(nEvent % MonkeyDiary::s_nKept)];
}

int firstKept()
{
    return s_nEvents > MonkeyDiary::s_nKept ? s_nEvents - MonkeyDiary::s_nKept : 0;
}

void writeOut(const char* pText)
{
    if (::write(STDERR_FILENO, pText, std::strlen(pText)) < 0)
    {
        return; // there is nobody left to tell
    }
}

void writeAll()
{
    writeOut(s_acSeed.data());
    for (int i = firstKept(); i < s_nEvents; ++i)
    {
        writeOut(entry(i).data());
        writeOut("\n");
    }
}

void onSignal(int nSignal)
{
    writeOut(nSignal == SIGALRM ? "\nThe last event does not end. " : "\nThe process dies. ");
    writeAll();
    for (std::size_t i = 0; i < s_anSignals.size(); ++i)
    {
        sigaction(s_anSignals[i], &s_aBefore[i], nullptr);
    }
    raise(nSignal);
}
} // namespace

namespace MonkeyDiary
{
void begin(quint32 nSeed)
{
    s_nEvents = 0;
    s_pAll = nullptr;
    std::snprintf(s_acSeed.data(), s_acSeed.size(), "Seed %u; the last events:\n", nSeed);
    struct sigaction objAction = {};
    objAction.sa_handler = onSignal;
    for (std::size_t i = 0; i < s_anSignals.size(); ++i)
    {
        sigaction(s_anSignals[i], &objAction, &s_aBefore[i]);
    }
    if (__sanitizer_set_death_callback != nullptr)
    {
        __sanitizer_set_death_callback(writeAll);
    }
}

void end()
{
    alarm(0);
    for (std::size_t i = 0; i < s_anSignals.size(); ++i)
    {
        sigaction(s_anSignals[i], &s_aBefore[i], nullptr);
    }
    if (__sanitizer_set_death_callback != nullptr)
    {
        __sanitizer_set_death_callback([] {});
    }
}

void write(const QString& strEvent)
{
    static const bool s_bAloud = qEnvironmentVariableIsSet("ORM_MONKEY_ALOUD");
    if (s_bAloud && s_nEvents > 0)
    {
        std::fprintf(stderr, "%s\n", entry(s_nEvents - 1).data());
    }
    if (s_pAll != nullptr && s_nEvents > 0)
    {
        s_pAll->append(QString::fromUtf8(entry(s_nEvents - 1).data()));
    }
    std::snprintf(entry(s_nEvents).data(), s_nEntryBytes, "%d: %s", s_nEvents, strEvent.toUtf8().constData());
    ++s_nEvents;
    alarm(s_nEventSeconds);
}

void add(const QString& strText)
{
    if (s_nEvents == 0)
    {
        return;
    }
    Entry& objEntry = entry(s_nEvents - 1);
    const std::size_t nUsed = std::strlen(objEntry.data());
    std::snprintf(objEntry.data() + nUsed, objEntry.size() - nUsed, "; %s", strText.toUtf8().constData());
}

void keepAll(QStringList* pEntries)
{
    s_pAll = pEntries;
}

int eventIndex()
{
    return s_nEvents - 1;
}

QString lastEntries()
{
    QString strEntries = QString::fromUtf8(s_acSeed.data());
    for (int i = firstKept(); i < s_nEvents; ++i)
    {
        strEntries += QString::fromUtf8(entry(i).data()) + QLatin1Char('\n');
    }
    return strEntries;
}
} // namespace MonkeyDiary
