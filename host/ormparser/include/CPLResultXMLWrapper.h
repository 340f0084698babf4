#pragma once

#include "CPLXMLReader.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <string_view>
#include <vector>

class CPLXMLWriter;

/// Reader of a saved result. A document is addressed by first tag, second tag and third tag; a *key* of a tag is its attribute of that
/// name or, where it has none, the text of its child element of that name. The first of several equal first or second tags counts.
///
/// The operations return true on success. On false the values they were to fill are as before, lastError() says why, and the log has
/// one line of level 3 with file, place and reason. Numbers are strict (OrmNumberText). An index counts the third tags of one name from 0.
///
/// Reading the third tags of a second tag in order costs time in proportion to their number.
class CPLResultXMLWrapper
{
public:
    CPLResultXMLWrapper();
    virtual ~CPLResultXMLWrapper();

    /// The host writes no results: returns false and logs that.
    virtual bool createXMLFile(const QString& strFile, const QString& strVersion, bool bOverwrite);

    /// Opens and parses the document; false if that fails, and then none is open.
    virtual bool loadXMLFile(const QString& strFile);

    /// The document's format version as it stands in the document; null if no document is open or it states none.
    virtual QString getVersion();

    CPLResultXMLWrapper(const CPLResultXMLWrapper&) = delete;
    CPLResultXMLWrapper& operator=(const CPLResultXMLWrapper&) = delete;

    /// The key's value as int. Makes the second tag the current one, also if the key is absent or no int (false); if the tag is absent
    /// there is no current one.
    bool Read2ndTagKeyValues(const QString& strFirst, const QString& strSecond, const QString& strKey, int& nValue);

    /// The same for several keys: one int per key, in key order. An absent key gives 0. A vector that already has one element per key is
    /// written in place, another one is resized.
    bool Read2ndTagKeyValues(const QString& strFirst, const QString& strSecond, const QStringList& lstKeys, std::vector<int>& vecValues);

    /// The key's text of the third tag at the index. Does not change the current second tag.
    bool Read3rdTagKeyValues(const QString& strFirst, const QString& strSecond, const QString& strThird, const QString& strKey,
                             QString& strValue, int nIndex);

    /// The same for several keys, all of which must be there; values parallel to keys.
    bool Read3rdTagKeyValues(const QString& strFirst, const QString& strSecond, const QString& strThird, const QStringList& lstKeys,
                             QStringList& lstValues, int nIndex);

    /// Under the current second tag: the key's text of the first child of that tag name.
    bool ReadCurrentKeyValues(const QString& strTag, const QString& strKey, QString& strValue);

    /// The same for the child at the index among the children of that tag name.
    bool ReadCurrentKeyValues(int nIndex, const QString& strTag, const QString& strKey, QString& strValue);
    bool ReadCurrentKeyValues(int nIndex, const QString& strTag, const QString& strKey, float& fValue);

    /// The same for several keys, all of which must be there; values parallel to keys.
    bool ReadCurrentKeyValues(int nIndex, const QString& strTag, const QStringList& lstKeys, QStringList& lstValues);

    // ---- For the host's own sections: CPLResultXMLWrapper_Bulk.cpp -------------------------------------------------------------------
    // Counts are what a document claims. They are checked against what it holds before anything is allocated.

    /// Makes the second tag the current one. False if it is absent: no tag is the current one then, and nothing is logged.
    bool openSection(const QString& strFirst, const QString& strSecond);

    /// The key's text of the current second tag. False if it is absent, or no second tag is the current one; nothing is logged.
    bool currentKeyText(const QString& strKey, QString& strValue);

    /// How many children of that tag name the current second tag has; 0 if none is the current one.
    qint64 currentChildCount(const QString& strTag);

    /// The keys of the first @p nCount children of that tag name, child by child in key order: nCount x keys numbers. False on too few
    /// children, an absent key or a text that is no finite number. @p nCount of 0 gives an empty vector.
    bool readCurrentNumbers(const QString& strTag, const QStringList& lstKeys, qint64 nCount, std::vector<float>& vecOut);

    /// The same for unsigned numbers.
    bool readCurrentUInts(const QString& strTag, const QStringList& lstKeys, qint64 nCount, std::vector<quint32>& vecOut);

    /// The first @p nValues values of the hex text "Text.Data" of the child at the index. False on too few or bad digits among them;
    /// more digits are ignored. @p nValues of 0 gives an empty result, whether or not there is such a child.
    bool readCurrentHexFloats(const QString& strTag, int nIndex, qint64 nValues, std::vector<float>& vecOut);
    bool readCurrentHexUInts(const QString& strTag, int nIndex, qint64 nValues, std::vector<quint32>& vecOut);
    bool readCurrentHexBytes(const QString& strTag, int nIndex, qint64 nValues, QByteArray& baOut);

    /// Why the last operation that failed did so, with file and place; empty as long as none failed since loading.
    QString lastError() const;

    /// Whether an operation failed since loading because memory ran short. What was then taken for absent may well be there, so that
    /// nothing that was read since can be believed to be whole.
    bool ranOutOfMemory() const { return m_bOutOfMemory; }

protected:
    /// Notes a failure in lastError() and in the log; returns false. @p strPlace is the tag, @p strReason what is wrong there.
    bool fail(const QString& strPlace, const QString& strReason);

private:
    /// Puts the text of a key of a row into @p strText, which is good until the next read. False, noted, if that fails.
    bool rowKey(COrmXMLSection* pSection, const QString& strTag, int nIndex, const QString& strKey, std::string_view& strText);
    bool rowKeys(COrmXMLSection* pSection, const QString& strTag, int nIndex, const QStringList& lstKeys, QStringList& lstValues);
    bool ownInt(const QString& strSecond, const QString& strKey, bool bMayBeAbsent, int& nValue);
    bool hexText(const QString& strTag, int nIndex, qint64 nValues, int nDigits, std::string_view& strText);
    template <typename T, typename FnDecode>
    bool readHex(const QString& strTag, int nIndex, qint64 nValues, int nDigits, T& vecOut, FnDecode fnDecode);
    template <typename T, typename FnParse>
    bool readRows(const QString& strTag, const QStringList& lstKeys, qint64 nCount, std::vector<T>& vecOut, FnParse fnParse);
    template <typename FnRead>
    bool guarded(const QString& strPlace, FnRead fnRead);
    bool absent(const QString& strPlace, const QString& strReason);

    CPLXMLReader m_objReader;
    COrmXMLSection* m_pCurrent = nullptr; ///< the current second tag; belongs to m_objReader; null: none
    QString m_strCurrent;                 ///< its name
    QString m_strLastError;
    bool m_bOutOfMemory = false; ///< since loading
};
