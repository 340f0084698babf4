#include "CPLResultXMLWrapper.h"

#include "COrmLog.h"
#include "COrmProcess.h"
#include "COrmXMLSection.h"
#include "CPLResultXMLWrapper_p.h"
#include "OrmExcerpt.h"
#include "OrmHexText.h"
#include "OrmNumberText.h"

namespace
{
const QString strTextKey = QStringLiteral("Text.Data");
constexpr qint64 nValuesPerAlive = 65536; ///< between two chances for the progress display

QString claim(qint64 nClaimed, qint64 nHeld, const QString& strWhat)
{
    return QStringLiteral("declares %1 %2, holds %3").arg(nClaimed).arg(strWhat).arg(nHeld);
}

/// One number of a row. Returns an empty text, or what is wrong.
template <typename T, typename FnParse>
QString readNumber(COrmXMLSection* pSection, const pugi::xml_node& objRow, const char* pKey, FnParse fnParse, T& value)
{
    std::string_view strText;
    QString strReason;
    const COrmXMLSection::EOutcome eOutcome = pSection->key(objRow, pKey, strText, strReason);
    if (eOutcome == COrmXMLSection::EOutcome::Absent)
        return QStringLiteral("has no %1").arg(QString::fromUtf8(pKey));
    if (eOutcome == COrmXMLSection::EOutcome::Unreadable)
        return strReason;
    if (!fnParse(strText, value))
        return QStringLiteral("%1=\"%2\" is no number of its kind").arg(QString::fromUtf8(pKey), OrmExcerpt::of(strText));
    return QString();
}
} // namespace

template <typename T, typename FnParse>
bool CPLResultXMLWrapper::readRows(const QString& strTag, const QStringList& lstKeys, qint64 nCount, std::vector<T>& vecOut,
                                   FnParse fnParse)
{
    if (!m_pCurrent)
        return fail(strTag, QStringLiteral("no second tag is the current one"));
    const std::string strUtf8Tag = strTag.toStdString();
    QList<QByteArray> lstUtf8Keys;
    qint64 nRowBytes = static_cast<qint64>(strUtf8Tag.size()) + 3; // of the shortest row that has all keys: <Tag Key="1"/>
    for (const QString& strKey : lstKeys)
    {
        lstUtf8Keys.append(strKey.toUtf8());
        nRowBytes += lstUtf8Keys.last().size() + 5;
    }
    qint64 nBytes = 0;
    if (nCount < 0 || __builtin_mul_overflow(nCount, nRowBytes, &nBytes) || nBytes > m_pCurrent->byteCount())
        return fail(strTag, claim(nCount, m_pCurrent->rowCount(), QStringLiteral("elements")));

    std::vector<T> vecRead;
    vecRead.reserve(static_cast<size_t>(nCount * lstKeys.size()));
    size_t nNextAlive = nValuesPerAlive;
    for (qint64 nRow = 0; nRow < nCount; ++nRow)
    {
        pugi::xml_node objRow;
        QString strReason;
        const COrmXMLSection::EOutcome eOutcome = m_pCurrent->find(strUtf8Tag, nRow, objRow, strReason);
        if (eOutcome == COrmXMLSection::EOutcome::Absent)
            return fail(strTag, claim(nCount, nRow, QStringLiteral("elements")));
        for (int nKey = 0; nKey < lstUtf8Keys.size() && strReason.isEmpty(); ++nKey)
        {
            T value = {};
            strReason = readNumber(m_pCurrent, objRow, lstUtf8Keys.at(nKey).constData(), fnParse, value);
            vecRead.push_back(value);
        }
        if (!strReason.isEmpty())
            return fail(QStringLiteral("%1[%2]").arg(strTag).arg(nRow), strReason);
        if (vecRead.size() >= nNextAlive)
        {
            nNextAlive += nValuesPerAlive;
            COrmProcess::keepAlive();
        }
    }
    vecOut = std::move(vecRead);
    return true;
}

qint64 CPLResultXMLWrapper::currentChildCount(const QString& strTag)
{
    qint64 nCount = 0;
    guarded(strTag,
            [&]
            {
                nCount = m_pCurrent ? m_pCurrent->count(strTag.toStdString()) : 0;
                return true;
            });
    return nCount;
}

bool CPLResultXMLWrapper::readCurrentNumbers(const QString& strTag, const QStringList& lstKeys, qint64 nCount, std::vector<float>& vecOut)
{
    return guarded(strTag,
                   [&]
                   {
                       return readRows(strTag, lstKeys, nCount, vecOut,
                                       [](std::string_view strText, float& fValue) { return OrmNumberText::toFloat(strText, fValue); });
                   });
}

bool CPLResultXMLWrapper::readCurrentUInts(const QString& strTag, const QStringList& lstKeys, qint64 nCount, std::vector<quint32>& vecOut)
{
    return guarded(strTag,
                   [&]
                   {
                       return readRows(strTag, lstKeys, nCount, vecOut,
                                       [](std::string_view strText, quint32& nValue) { return OrmNumberText::toUInt(strText, nValue); });
                   });
}

/// The hex text of a row, checked to be long enough.
bool CPLResultXMLWrapper::hexText(const QString& strTag, int nIndex, qint64 nValues, int nDigits, std::string_view& strText)
{
    if (nValues < 0)
        return fail(strTag, QStringLiteral("declares %1 values").arg(nValues));
    if (!rowKey(m_pCurrent, strTag, nIndex, strTextKey, strText))
        return false;
    const auto nHeld = static_cast<qint64>(strText.size()) / nDigits;
    return nValues <= nHeld || fail(QStringLiteral("%1[%2]").arg(strTag).arg(nIndex), claim(nValues, nHeld, QStringLiteral("values")));
}

/// Decodes in pieces, so that the progress display stays alive.
template <typename T, typename FnDecode>
bool CPLResultXMLWrapper::readHex(const QString& strTag, int nIndex, qint64 nValues, int nDigits, T& vecOut, FnDecode fnDecode)
{
    std::string_view strText;
    if (nValues != 0 && !hexText(strTag, nIndex, nValues, nDigits, strText))
        return false;
    T vecRead;
    vecRead.resize(static_cast<decltype(vecRead.size())>(nValues));
    for (qint64 nStart = 0; nStart < nValues; nStart += nValuesPerAlive)
    {
        const qint64 nPart = qMin(nValuesPerAlive, nValues - nStart);
        qint64 nOffset = 0;
        if (!fnDecode(strText.data() + nStart * nDigits, nPart * nDigits, nPart, vecRead.data() + nStart, &nOffset))
            return fail(QStringLiteral("%1[%2]").arg(strTag).arg(nIndex),
                        QStringLiteral("%1: no hexadecimal digit at offset %2").arg(strTextKey).arg(nStart * nDigits + nOffset));
        COrmProcess::keepAlive();
    }
    vecOut = std::move(vecRead);
    return true;
}

bool CPLResultXMLWrapper::readCurrentHexFloats(const QString& strTag, int nIndex, qint64 nValues, std::vector<float>& vecOut)
{
    return guarded(strTag,
                   [&]
                   {
                       if (!readHex(strTag, nIndex, nValues, OrmHexText::nDigitsPerValue, vecOut, OrmHexText::textBufToValueBuf))
                           return false;
                       if (OrmHexText::looksByteSwapped(vecOut.data(), nValues))
                           ORM_LOG(2,
                                   QStringLiteral("%1: %2[%3]: values look byte-swapped").arg(m_objReader.fileName(), strTag).arg(nIndex));
                       return true;
                   });
}

bool CPLResultXMLWrapper::readCurrentHexUInts(const QString& strTag, int nIndex, qint64 nValues, std::vector<quint32>& vecOut)
{
    return guarded(strTag, [&] { return readHex(strTag, nIndex, nValues, OrmHexText::nDigitsPerValue, vecOut, OrmHexText::decodeUInts); });
}

bool CPLResultXMLWrapper::readCurrentHexBytes(const QString& strTag, int nIndex, qint64 nValues, QByteArray& baOut)
{
    return guarded(strTag,
                   [&]
                   {
                       return readHex(strTag, nIndex, nValues, OrmHexText::nDigitsPerByte, baOut,
                                      [](const char* pText, qint64 nLength, qint64 nBytes, char* pOut, qint64* pnOffset)
                                      { return OrmHexText::hex2ascii(pText, nLength, nBytes, reinterpret_cast<quint8*>(pOut), pnOffset); });
                   });
}
