#include "PlyHeader.h"

#include "TextLines.h"

namespace
{
constexpr qint64 nMostBytes = 1048576;        ///< of a header
constexpr std::size_t nMostElements = 64;     ///< kinds of elements
constexpr std::size_t nMostProperties = 1024; ///< of one kind

QString text(std::string_view strText)
{
    return QString::fromUtf8(strText.data(), static_cast<int>(strText.size()));
}

bool scalarOf(std::string_view strName, EScalar& eType)
{
    struct SName
    {
        const char* m_pName;
        EScalar m_eType;
    };
    static constexpr SName aNames[] = {
        {"char", EScalar::Int8},   {"int8", EScalar::Int8},     {"uchar", EScalar::UInt8},   {"uint8", EScalar::UInt8},
        {"short", EScalar::Int16}, {"int16", EScalar::Int16},   {"ushort", EScalar::UInt16}, {"uint16", EScalar::UInt16},
        {"int", EScalar::Int32},   {"int32", EScalar::Int32},   {"uint", EScalar::UInt32},   {"uint32", EScalar::UInt32},
        {"float", EScalar::Float}, {"float32", EScalar::Float}, {"double", EScalar::Double}, {"float64", EScalar::Double}};
    for (const SName& name : aNames)
    {
        if (strName == name.m_pName)
        {
            eType = name.m_eType;
            return true;
        }
    }
    return false;
}

using Words = std::vector<std::string_view>;

/// "property float x" or "property list uchar int vertex_indices"
QString readProperty(const Words& vecWords, SPlyElement& element)
{
    SPlyProperty property;
    property.m_bList = vecWords.size() == 5 && vecWords[1] == "list";
    if (!property.m_bList && vecWords.size() != 3)
        return QStringLiteral("a property needs a type and a name");
    if (property.m_bList && (!scalarOf(vecWords[2], property.m_eLength) || ScalarBytes::isFloat(property.m_eLength)))
        return QStringLiteral("\"%1\" is no type for the length of a list").arg(OpenText::shown(vecWords[2]));
    const std::string_view strType = vecWords[vecWords.size() - 2];
    if (!scalarOf(strType, property.m_eType))
        return QStringLiteral("the type \"%1\" is not known").arg(OpenText::shown(strType));
    property.m_strName = text(vecWords.back());
    if (element.find(property.m_strName) >= 0)
        return QStringLiteral("the property \"%1\" occurs twice").arg(OpenText::shown(vecWords.back()));
    if (element.m_vecProperties.size() >= nMostProperties)
        return QStringLiteral("more than %1 properties").arg(nMostProperties);
    element.m_vecProperties.push_back(property);
    return {};
}

QString readElement(const Words& vecWords, std::vector<SPlyElement>& vecElements)
{
    SPlyElement element;
    if (vecWords.size() != 3 || !OpenText::toInteger(vecWords[2], element.m_nCount) || element.m_nCount < 0)
        return QStringLiteral("an element needs a name and a count");
    element.m_strName = text(vecWords[1]);
    for (const SPlyElement& other : vecElements)
    {
        if (other.m_strName == element.m_strName)
            return QStringLiteral("the element \"%1\" occurs twice").arg(OpenText::shown(vecWords[1]));
    }
    if (vecElements.size() >= nMostElements)
        return QStringLiteral("more than %1 elements").arg(nMostElements);
    vecElements.push_back(element);
    return {};
}

QString readFormat(const Words& vecWords, SPlyHeader& header)
{
    if (vecWords.size() != 3 || vecWords[2] != "1.0")
        return QStringLiteral("the format is not one of version 1.0");
    header.m_bAscii = vecWords[1] == "ascii";
    header.m_bBigEndian = vecWords[1] == "binary_big_endian";
    if (!header.m_bAscii && !header.m_bBigEndian && vecWords[1] != "binary_little_endian")
        return QStringLiteral("the format \"%1\" is not known").arg(OpenText::shown(vecWords[1]));
    return {};
}
} // namespace

int SPlyElement::find(const QString& strProperty) const
{
    for (std::size_t i = 0; i < m_vecProperties.size(); ++i)
    {
        if (m_vecProperties[i].m_strName == strProperty)
            return static_cast<int>(i);
    }
    return -1;
}

qint64 SPlyElement::leastBytes() const
{
    qint64 nBytes = 0;
    for (const SPlyProperty& property : m_vecProperties)
        nBytes += ScalarBytes::size(property.m_bList ? property.m_eLength : property.m_eType);
    return nBytes;
}

QString SPlyHeader::read(const QByteArray& baContent)
{
    CTextLines lines(std::string_view(baContent.constData(), static_cast<std::size_t>(qMin<qint64>(baContent.size(), nMostBytes))));
    Words vecWords;
    std::string_view strLine;
    if (!lines.next(strLine) || OpenText::trimmed(strLine) != "ply")
        return OpenText::atLine(1, QStringLiteral("the file does not begin with \"ply\""));
    bool bFormat = false;
    while (lines.next(strLine))
    {
        OpenText::split(strLine, vecWords);
        if (vecWords.empty() || vecWords[0] == "comment" || vecWords[0] == "obj_info")
            continue;
        QString strProblem;
        if (vecWords[0] == "end_header")
        {
            m_nBodyAt = lines.position();
            m_nLines = lines.number();
            return bFormat ? QString() : OpenText::atLine(m_nLines, QStringLiteral("the header names no format"));
        }
        if (vecWords[0] == "format")
        {
            strProblem = readFormat(vecWords, *this);
            bFormat = true;
        }
        else if (vecWords[0] == "element")
            strProblem = readElement(vecWords, m_vecElements);
        else if (vecWords[0] == "property" && !m_vecElements.empty())
            strProblem = readProperty(vecWords, m_vecElements.back());
        else
            strProblem = QStringLiteral("\"%1\" is not known in a header").arg(OpenText::shown(vecWords[0]));
        if (!strProblem.isEmpty())
            return OpenText::atLine(lines.number(), strProblem);
    }
    return OpenText::atLine(lines.number(), QStringLiteral("the header has no end"));
}
