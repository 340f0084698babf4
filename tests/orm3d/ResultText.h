#pragma once

#include "COrmLog.h"
#include "OrmHexText.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <stdexcept>
#include <vector>

/// Surface and volume sections of result documents, in either version of the format, and files with them.
namespace ResultText
{
/// A block with its values: one element per row of numbers in version 1.0, one hex text in version 2.0.
inline QByteArray block(const QByteArray& strTag, const QByteArray& strAttributes, const QByteArray& strRow,
                        const QList<QByteArray>& lstKeys, const QByteArray& strValues, const QByteArray& strHex,
                        const std::vector<QByteArray>& vecTexts, bool bText)
{
    QByteArray strOut = "<" + strTag + " " + strAttributes + ">\n";
    if (bText)
    {
        for (std::size_t i = 0; i + static_cast<std::size_t>(lstKeys.size()) <= vecTexts.size();
             i += static_cast<std::size_t>(lstKeys.size()))
        {
            strOut += "<" + strRow;
            for (int nKey = 0; nKey < lstKeys.size(); ++nKey)
                strOut += " " + lstKeys[nKey] + "=\"" + vecTexts[i + static_cast<std::size_t>(nKey)] + "\"";
            strOut += "/>\n";
        }
    }
    else
    {
        strOut += "<" + strValues + "><Text.Data>" + strHex + "</Text.Data></" + strValues + ">\n";
    }
    return strOut + "</" + strTag + ">\n";
}

inline std::vector<QByteArray> texts(const std::vector<float>& vecNumbers)
{
    std::vector<QByteArray> vecTexts;
    vecTexts.reserve(vecNumbers.size());
    for (const float fNumber : vecNumbers)
        vecTexts.push_back(QByteArray::number(static_cast<double>(fNumber), 'g', 9));
    return vecTexts;
}

inline std::vector<QByteArray> texts(const std::vector<quint32>& vecNumbers)
{
    std::vector<QByteArray> vecTexts;
    vecTexts.reserve(vecNumbers.size());
    for (const quint32 nNumber : vecNumbers)
        vecTexts.push_back(QByteArray::number(nNumber));
    return vecTexts;
}

/// @param nVertices, nTriangles what the counts say; below 0: the truth
inline QByteArray surface(const std::vector<float>& vecVertices, const std::vector<quint32>& vecTriangles, bool bText, int nVertices = -1,
                          int nTriangles = -1)
{
    const QByteArray strVertices = QByteArray::number(nVertices < 0 ? static_cast<int>(vecVertices.size() / 3) : nVertices);
    const QByteArray strTriangles = QByteArray::number(nTriangles < 0 ? static_cast<int>(vecTriangles.size() / 3) : nTriangles);
    return "<Orm3.0.Surface.Data>\n" +
           block("Orm3.0.Surface.Vertices", "Count=\"" + strVertices + "\"", "Orm3.0.Surface.Vertex", {"X", "Y", "Z"},
                 "Orm3.0.Surface.Vertices.Values", OrmHexText::encodeFloats(vecVertices.data(), static_cast<qint64>(vecVertices.size())),
                 texts(vecVertices), bText) +
           block("Orm3.0.Surface.Triangles", "Count=\"" + strTriangles + "\"", "Orm3.0.Surface.Triangle", {"A", "B", "C"},
                 "Orm3.0.Surface.Triangles.Values", OrmHexText::encodeUInts(vecTriangles.data(), static_cast<qint64>(vecTriangles.size())),
                 texts(vecTriangles), bText) +
           "</Orm3.0.Surface.Data>\n";
}

/// @param vecNumbers    x, y, z, value of each voxel
/// @param strAttributes of the block of voxels
inline QByteArray volume(const std::vector<float>& vecNumbers, const QByteArray& strAttributes, bool bText)
{
    return "<Orm3.0.Volume.Data>\n" +
           block("Orm3.0.Volume.Voxels", strAttributes, "Orm3.0.Volume.Voxel", {"X", "Y", "Z", "Value"}, "Orm3.0.Volume.Voxels.Values",
                 OrmHexText::encodeFloats(vecNumbers.data(), static_cast<qint64>(vecNumbers.size())), texts(vecNumbers), bText) +
           "</Orm3.0.Volume.Data>\n";
}

inline QByteArray document(const QByteArray& strSections, const QByteArray& strVersion)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Ormelle.Result Version=\"" + strVersion + "\">\n" + strSections +
           "</Ormelle.Result>\n";
}

/// Writes files that go away with the object.
class CFiles
{
public:
    QString write(const QByteArray& strContent)
    {
        const QString strFile = m_objFolder.filePath(QStringLiteral("%1.xml").arg(++m_nFiles));
        QFile objFile(strFile);
        if (!objFile.open(QIODevice::WriteOnly) || objFile.write(strContent) != strContent.size())
            throw std::runtime_error("a test file could not be written");
        return strFile;
    }

private:
    QTemporaryDir m_objFolder;
    int m_nFiles = 0;
};

/// Collects what the host's libraries log.
class CLogLines
{
public:
    CLogLines() : m_nSink(getLogObject()->addSink([this](const SLogEntry& sEntry) { m_lstLines.append(sEntry.strMessage); })) {}
    ~CLogLines() { getLogObject()->removeSink(m_nSink); }
    CLogLines(const CLogLines&) = delete;
    CLogLines& operator=(const CLogLines&) = delete;

    const QStringList& lines() const { return m_lstLines; }

private:
    QStringList m_lstLines;
    int m_nSink;
};
} // namespace ResultText
