#ifndef CORMPLAINTEXT_H
#define CORMPLAINTEXT_H

#include "COrmPlainTextDelegate.h"

#include <QFontMetrics>
#include <QString>

/// How names from files are shown: as plain text in which nothing is hidden and nothing changes the reading direction. For painting only;
/// names themselves are keys and stay as they are.
class COrmPlainText
{
public:
    COrmPlainText() = delete;

    /// The text with control, bidirectional, invisible and broken characters replaced by escapes such as \n and \u202E.
    /// @param bKeepLineBreaks leaves line feeds alone
    static QString visible(const QString& strText, bool bKeepLineBreaks = false);
    /// At most nMaximum characters (never below 3): what is longer loses its middle to an ellipsis. No character is cut in half.
    static QString shortened(const QString& strText, int nMaximum);
    /// The visible form, its middle elided where it is wider than nWidth pixels. Long texts cost no more than what can be shown.
    static QString elided(const QString& strText, const QFontMetrics& objMetrics, int nWidth);
    /// The visible form for places that take rich text by themselves (tool tips): shown literally, never interpreted.
    static QString toolTip(const QString& strText);
};

#endif
