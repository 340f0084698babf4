// "index", "sequence" and "click": the settings texts of a study, as the tool and the host read them.

#include "CFaultRecorder.h"
#include "CFaultWork.h"

#include "CPLClickInfo.h"
#include "CPLSequenceInfo.h"
#include "CPLSettingsFileWrapper.h"
#include "CStudyWriter.h"

#include <QDir>
#include <QDirIterator>

namespace
{
/// One text. What is read of it is the whole or nothing.
class CTextWork : public CFaultWork
{
public:
    using FnRead = bool (*)(const QString& strFile, QStringList& lstRead);

    CTextWork(const QString& strPattern, FnRead fnRead) : m_fnRead(fnRead)
    {
        m_objStudy.addSequence(QStringLiteral("SEQ1"));
        for (const char* pName : {"Day 0", "Day 7", "Day 14"})
            m_objStudy.addIndexEntry(QStringLiteral("SEQ1"), 0, QLatin1String(pName), QLatin1String(pName) + QStringLiteral(".xml"));
        QDirIterator itFile(m_objStudy.folder(), {strPattern}, QDir::Files, QDirIterator::Subdirectories);
        m_strFile = itFile.next();
    }

    QByteArray folder() const override { return m_objStudy.folder().toLocal8Bit(); }
    bool isRefused() const override { return !m_bRead; }
    void prepare() override
    {
        m_objRecorder.clear();
        m_lstRead.clear();
        m_bRead = false;
    }
    void run() override
    {
        // The callers are guarded: the load, and the host's search for sequences.
        try
        {
            m_bRead = m_fnRead(m_strFile, m_lstRead);
        }
        catch (const std::bad_alloc&)
        {
            m_bThrown = true;
        }
    }
    QString wrongOutcome(const OrmFaults::SPlan&, const OrmFaults::SRun& sRun) override
    {
        const bool bSaid = !m_objRecorder.reasons().isEmpty() || m_bThrown;
        m_bThrown = false;
        if (!m_bRead)
            return bSaid ? QString() : QStringLiteral("nobody said why it was not read");
        if (sRun.nHit == 0)
            m_lstSound = m_lstRead;
        return m_lstRead == m_lstSound ? QString() : QStringLiteral("read in part: ") + m_lstRead.join('|');
    }

private:
    FnRead m_fnRead;
    CStudyWriter m_objStudy;
    CFaultRecorder m_objRecorder;
    QString m_strFile;
    QStringList m_lstRead;
    QStringList m_lstSound;
    bool m_bRead = false;
    bool m_bThrown = false;
};

bool readIndex(const QString& strFile, QStringList& lstRead)
{
    CPLSettingsFileWrapper objIndex;
    objIndex.setMenuNameTag(QStringLiteral("MenuName"));
    objIndex.setFileNameTag(QStringLiteral("FileName"));
    if (objIndex.load(strFile) != 0)
        return false;
    lstRead = objIndex.getMenuNames(QStringLiteral("SOLA"));
    lstRead.append(objIndex.getFileNameForMenuName(QStringLiteral("day 7"), QStringLiteral("-")));
    return true;
}

bool readSequence(const QString& strFile, QStringList& lstRead)
{
    CPLSequenceInfo objInfo;
    if (objInfo.loadFile(strFile) != 0)
        return false;
    lstRead = objInfo.getClickNumberList();
    for (const QString& strSection : objInfo.sectionNames())
        lstRead.append(strSection + QLatin1Char(':') + objInfo.value(strSection, QStringLiteral("Sequence")));
    return true;
}

bool readClick(const QString& strFile, QStringList& lstRead)
{
    CPLClickInfo objInfo;
    if (objInfo.loadClickInfo(strFile, false) != 0)
        return false;
    lstRead = objInfo.sectionNames();
    return true;
}
} // namespace

std::unique_ptr<CFaultWork> documentWork(const QString& strName)
{
    if (strName == QLatin1String("index"))
        return std::make_unique<CTextWork>(QStringLiteral("SOLA.txt"), &readIndex);
    if (strName == QLatin1String("sequence"))
        return std::make_unique<CTextWork>(QStringLiteral("Sequence*.txt"), &readSequence);
    if (strName == QLatin1String("click"))
        return std::make_unique<CTextWork>(QStringLiteral("ClickInfo.txt"), &readClick);
    return nullptr;
}
