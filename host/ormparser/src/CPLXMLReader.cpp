#include "CPLXMLReader.h"

#include "COrmLog.h"
#include "COrmXMLFragment.h"
#include "COrmXMLSection.h"
#include "OrmFileReader.h"
#include "OrmXmlScanner.h"

#include <new>
#include <string>

/// A document that was found sound.
struct CPLXMLReader::SDocument
{
    explicit SDocument(const QByteArray& baText) : m_baText(baText), m_objFragment(m_baText.constData(), m_objLayout) {}

    const QByteArray m_baText;
    SXmlLayout m_objLayout;
    COrmXMLFragment m_objFragment;
    std::map<const SXmlSectionPlace*, COrmXMLSection> m_mapSections; ///< those that were asked for
    QString m_strVersion;
};

CPLXMLReader::CPLXMLReader() = default;

CPLXMLReader::~CPLXMLReader() = default;

bool CPLXMLReader::loadFile(const QString& strFile, QString& strError)
{
    close();
    m_strFile = strFile;
    QByteArray baText;
    return OrmFileReader::read(strFile, baText, &strError) && loadText(baText, strFile, strError);
}

bool CPLXMLReader::loadText(const QByteArray& baText, const QString& strPlace, QString& strError)
{
    close();
    m_strFile = strPlace;
    QString strReason;
    try
    {
        auto pDocument = std::make_unique<SDocument>(baText);
        OrmXmlScanner objScanner(pDocument->m_baText.constData(), pDocument->m_baText.size(), pDocument->m_objLayout);
        if (objScanner.scan())
        {
            pDocument->m_objFragment.parseTag(pDocument->m_objLayout.m_objRootTag);
            const pugi::xml_attribute objVersion = pDocument->m_objFragment.nodes().first_child().attribute("Version");
            if (objVersion)
                pDocument->m_strVersion = QString::fromUtf8(objVersion.value());
            m_pDocument = std::move(pDocument);
            return true;
        }
        strReason = objScanner.error();
    }
    catch (const std::bad_alloc&)
    {
        strReason = QStringLiteral("not enough memory");
    }
    strError = QStringLiteral("%1: %2").arg(strPlace, strReason);
    ORM_LOG(3, strError);
    return false;
}

void CPLXMLReader::close()
{
    m_pDocument.reset();
}

bool CPLXMLReader::isOpen() const
{
    return m_pDocument != nullptr;
}

QString CPLXMLReader::fileName() const
{
    return m_strFile;
}

QString CPLXMLReader::version() const
{
    return m_pDocument ? m_pDocument->m_strVersion : QString();
}

COrmXMLSection* CPLXMLReader::section(const QString& strFirst, const QString& strSecond)
{
    if (!m_pDocument)
        return nullptr;
    const SXmlLayout& objLayout = m_pDocument->m_objLayout;
    const std::string strFirstTag = strFirst.toStdString();
    const auto itFirst = objLayout.m_mapFirstTags.find(strFirstTag);
    if (itFirst == objLayout.m_mapFirstTags.end())
        return nullptr;
    const std::string strSecondTag = strSecond.toStdString();
    const auto itSection = objLayout.m_mapSections.find({itFirst->second, std::string_view(strSecondTag)});
    if (itSection == objLayout.m_mapSections.end())
        return nullptr;
    const SXmlSectionPlace* pPlace = &itSection->second;
    const auto objInserted =
        m_pDocument->m_mapSections.try_emplace(pPlace, m_pDocument->m_baText.constData(), objLayout, *pPlace, m_pDocument->m_objFragment);
    return &objInserted.first->second;
}
