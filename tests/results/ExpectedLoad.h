#pragma once

#include <QStringList>

/// What the host is asked for while a result is loaded, entry by entry as CRecordingHost writes it down.
namespace ExpectedLoad
{

/// From the press of the button to the reader.
inline QStringList beginning()
{
    return {"interface locked", "cursor set 3", "title: Performing SOLA reconstruction...", "process start 15 8 false Aborting..."};
}

/// A sound document of that kind, read without a message of failure.
inline QStringList reading(int nKind)
{
    if (nKind == 1)
    {
        return {"progress 1/15: Loading NOVA Analysis: Reading XML file...",
                "progress 2/15: Loading NOVA Analysis: Loading well plate quantification parameters...",
                "progress 3/15: Loading NOVA Analysis: reading mesh surface...",
                "hint: Reading mesh surface...",
                "hint: Reading height map image...",
                "progress 4/15: Loading Analysis: Reading photon density maps...",
                "hint: Reading photon density maps...",
                "progress 5/15: Loading Analysis: Reading measured photon densities...",
                "progress 6/15: Loading NOVA Analysis: Reading source volume...",
                "hint: Reading source volume...",
                "progress 7/15: Loading NOVA Analysis: Reading results...",
                "hint: Reading results output..."};
    }
    return {"progress 1/15: Loading SOLA Analysis: Reading XML file...",
            "progress 2/15: Loading SOLA Analysis: Loading well plate quantification parameters...",
            "progress 3/15: Loading SOLA analysis: Reading mesh surface...",
            "log 1: Reading mesh surface...",
            "log 1: Reading height map image...",
            "progress 4/15: Loading SOLA analysis: Reading photon density maps...",
            "log 1: Reading photon density maps...",
            "progress 5/15: Loading  analysis: reading measured photon densities...",
            "progress 6/15: Loading SOLA analysis: Reading source volume...",
            "log 1: Reading source volume...",
            "progress 8/15: Loading  analysis: Displaying read data...",
            "progress 7/15: Loading  analysis: Reading results...",
            "hint: Reading results output..."};
}

/// Taking over the record.
inline QStringList application(int nKind)
{
    QStringList lst = {"progress 8/15: Loading  Analysis: Updating surface...",       "hint: Updating surface mesh...",
                       "progress 9/15: Loading  Analysis: Updating source volume...", "hint: Updating source volume...",
                       "progress 13/15: Loading  analysis: Updating results view...", "hint: Updating results view..."};
    if (nKind == 1)
    {
        lst += QStringList({"progress 14/15: Loading  analysis: Updating results view...", "hint: Updating results view..."});
    }
    return lst;
}

/// The message to the user.
inline QStringList report(const QString& strText = QStringLiteral("Unable to load analysis data"))
{
    return {"cursor restored", "interface free", "box information: " + strText, "interface locked"};
}

/// After a reader that gave up.
inline QStringList failedReading()
{
    return report() + QStringList({"process end 1", "cursor restored"});
}

/// The closing steps of the button.
inline QStringList closing()
{
    return {"process end 1", "interface free"};
}

inline QStringList success(int nKind)
{
    return beginning() + reading(nKind) + application(nKind) + QStringList("cursor restored") + closing();
}

/// Where two lists part, with the entry before and what follows on both sides; empty if they don't.
inline QString difference(const QStringList& lstSeen, const QStringList& lstExpected)
{
    if (lstSeen == lstExpected)
    {
        return QString();
    }
    int nAt = 0;
    while (nAt < lstSeen.size() && nAt < lstExpected.size() && lstSeen.at(nAt) == lstExpected.at(nAt))
    {
        ++nAt;
    }
    return QStringLiteral("\nafter    %1\nseen     %2\nexpected %3")
        .arg(lstExpected.value(nAt - 1), lstSeen.mid(nAt, 5).join("\n         "), lstExpected.mid(nAt, 5).join("\n         "));
}

} // namespace ExpectedLoad
