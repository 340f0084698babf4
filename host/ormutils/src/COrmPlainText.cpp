#include "COrmPlainText.h"

#include <algorithm>

namespace
{
constexpr int g_nLongestToolTip = 2000;
const QChar g_chEllipsis(0x2026);

/// Characters that draw nothing, or that change how their neighbours are drawn. The joiners U+200C and U+200D stay: scripts and
/// emoji need them.
bool isHidden(uint nCode)
{
    return nCode < 0x20 || (nCode >= 0x7F && nCode < 0xA0) // C0, DEL, C1
           || nCode == 0x00AD || nCode == 0x034F || nCode == 0x061C || nCode == 0x115F || nCode == 0x1160 || nCode == 0x180E ||
           nCode == 0x200B || nCode == 0x200E || nCode == 0x200F // zero width space, directional marks
           || (nCode >= 0x2028 && nCode <= 0x202E)               // separators, directional embeddings and overrides
           || (nCode >= 0x2060 && nCode <= 0x206F)               // word joiner, isolates, deprecated controls
           || nCode == 0x3164 || nCode == 0xFEFF || nCode == 0xFFA0 || (nCode >= 0xFFF0 && nCode <= 0xFFFB) ||
           (nCode >= 0x1D173 && nCode <= 0x1D17A) || (nCode >= 0xE0000 && nCode <= 0xE0FFF) // musical controls, tags
           || QChar::isSurrogate(nCode) || QChar::isNonCharacter(nCode);
}

void appendEscape(QString& strOut, uint nCode)
{
    switch (nCode)
    {
    case '\n':
        strOut += QLatin1String("\\n");
        break;
    case '\r':
        strOut += QLatin1String("\\r");
        break;
    case '\t':
        strOut += QLatin1String("\\t");
        break;
    default:
        if (nCode < 0x10000)
            strOut += QLatin1String("\\u") + QString::number(nCode, 16).toUpper().rightJustified(4, QLatin1Char('0'));
        else
            strOut += QLatin1String("\\U") + QString::number(nCode, 16).toUpper().rightJustified(8, QLatin1Char('0'));
    }
}
} // namespace

QString COrmPlainText::visible(const QString& strText, bool bKeepLineBreaks)
{
    QString strOut;
    strOut.reserve(strText.size());
    for (int i = 0; i < strText.size(); ++i)
    {
        const QChar ch = strText.at(i);
        uint nCode = ch.unicode();
        if (ch.isHighSurrogate() && i + 1 < strText.size() && strText.at(i + 1).isLowSurrogate())
            nCode = QChar::surrogateToUcs4(ch, strText.at(++i));
        if (isHidden(nCode) && !(bKeepLineBreaks && nCode == '\n'))
            appendEscape(strOut, nCode);
        else if (nCode < 0x10000)
            strOut += QChar(ushort(nCode));
        else
            strOut += QChar(QChar::highSurrogate(nCode)), strOut += QChar(QChar::lowSurrogate(nCode));
    }
    return strOut;
}

QString COrmPlainText::shortened(const QString& strText, int nMaximum)
{
    nMaximum = std::max(nMaximum, 3);
    if (strText.size() <= nMaximum)
        return strText;
    int nHead = nMaximum / 2;
    int nTail = nMaximum - 1 - nHead;
    if (strText.at(nHead).isLowSurrogate() && strText.at(nHead - 1).isHighSurrogate())
        --nHead;
    if (strText.at(strText.size() - nTail).isLowSurrogate() && strText.at(strText.size() - nTail - 1).isHighSurrogate())
        --nTail;
    return strText.left(nHead) + g_chEllipsis + strText.right(nTail);
}

QString COrmPlainText::elided(const QString& strText, const QFontMetrics& objMetrics, int nWidth)
{
    // No font shows more than one character per pixel that anybody could read, so a text beyond that loses its middle unmeasured.
    const int nUseful = std::max(nWidth, 16);
    return objMetrics.elidedText(visible(shortened(strText, nUseful)), Qt::ElideMiddle, nWidth);
}

QString COrmPlainText::toolTip(const QString& strText)
{
    return QStringLiteral("<span>") + visible(shortened(strText, g_nLongestToolTip)).toHtmlEscaped() + QStringLiteral("</span>");
}
