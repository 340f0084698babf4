#include "ImportTarget.h"

#include "CPLSettingsFileWrapper.h"
#include "OrmFileReader.h"
#include "OrmFileWriter.h"
#include "OrmSequenceScanner.h"
#include "SequenceFiles.h"
#include "SequenceKind.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>

namespace
{
constexpr int kMinClicks = 2; ///< a sequence of fewer is of no kind

QString written(const QString& strFile, const QByteArray& baContent)
{
    const QString strReason = OrmFileWriter::replace(strFile, baContent);
    return strReason.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(strFile, strReason);
}

QString cannotBeMade(const QString& strFolder)
{
    return QStringLiteral("%1: the folder cannot be made").arg(strFolder);
}

/// A new folder that is removed with all that is in it, unless it was moved to its place.
class CNewFolder
{
public:
    CNewFolder() = default;
    CNewFolder(const CNewFolder&) = delete;
    CNewFolder& operator=(const CNewFolder&) = delete;
    ~CNewFolder() { remove(); }

    bool make(const QString& strPath)
    {
        m_strPath = QDir().mkdir(strPath) ? strPath : QString();
        return !m_strPath.isEmpty();
    }
    void remove()
    {
        if (!m_strPath.isEmpty())
        {
            QDir(m_strPath).removeRecursively();
            m_strPath.clear();
        }
    }

    /// False with errno set where something is in that place.
    bool moveTo(const QString& strPlace)
    {
        const bool bMoved = std::rename(QFile::encodeName(m_strPath).constData(), QFile::encodeName(strPlace).constData()) == 0;
        if (bMoved)
        {
            m_strPath.clear();
        }
        return bMoved;
    }

private:
    QString m_strPath;
};

SClickText clickOf(const SSavedResult& result, const QString& strChannel)
{
    SClickText click;
    click.m_strRemark = QStringLiteral("Imported: no picture was taken. What follows says which kind of sequence this is.");
    click.m_bFluorescent = result.m_bNova;
    bool bNumber = false;
    strChannel.toDouble(&bNumber);
    click.m_strEmission = result.m_bNova ? result.m_strEmissionFilter : bNumber ? strChannel : QString();
    if (result.m_bNova)
    {
        click.m_strExcitation = result.m_strExcitationFilter;
        click.m_strSpotX = QStringLiteral("1.00");
        click.m_strSpotY = QStringLiteral("1.00");
    }
    return click;
}
} // namespace

QString CImportTarget::find()
{
    const QDir study(m_options.m_strOut);
    const QString strFolder = study.filePath(m_options.m_strSequence);
    QString strSequenceFile;
    for (const QString& strName : QDir(strFolder).entryList(QDir::Files))
    {
        if (strSequenceFile.isEmpty() && OrmSequenceScanner::isSequenceFileName(strName))
        {
            strSequenceFile = QDir(strFolder).filePath(strName);
        }
    }
    if (strSequenceFile.isEmpty() && study.exists())
    {
        OrmSequenceScanner::scan({m_options.m_strOut},
                                 [&](const SSequenceFacts& sequence)
                                 {
                                     if (sequence.m_strSequenceID.compare(m_options.m_strSequence, Qt::CaseInsensitive) == 0)
                                     {
                                         strSequenceFile = sequence.m_strSequenceFile;
                                     }
                                 });
    }
    if (!strSequenceFile.isEmpty())
    {
        return checkSequence(strSequenceFile);
    }
    return QFileInfo::exists(strFolder) ? QStringLiteral("%1: it exists and is no sequence").arg(strFolder) : QString();
}

/// A result must not come to a sequence of something else by a slip.
QString CImportTarget::checkSequence(const QString& strSequenceFile)
{
    SSequenceFacts sequence;
    const QString strProblem = OrmSequenceFacts::read(strSequenceFile, sequence);
    if (!strProblem.isEmpty())
    {
        return strProblem.endsWith(QLatin1Char('.')) ? strProblem.chopped(1) : strProblem;
    }
    m_strFolder = QFileInfo(strSequenceFile).path();
    m_strSequenceID = sequence.m_strSequenceID;
    for (const SClickFacts& click : qAsConst(sequence.m_lstClicks))
    {
        m_lstClicks.append(click.m_strClickNumber);
    }
    const QString strOtherKind = m_options.m_bNova ? QStringLiteral("SOLA") : QStringLiteral("NOVA");
    const QString strKind = SequenceKind::ofFile(strSequenceFile);
    if (m_strSequenceID.compare(m_options.m_strSequence, Qt::CaseInsensitive) != 0)
    {
        return QStringLiteral("%1: it is the sequence \"%2\", not \"%3\"").arg(strSequenceFile, m_strSequenceID, m_options.m_strSequence);
    }
    if (!sequence.m_strSubject.isEmpty() && sequence.m_strSubject != m_options.m_strSubject)
    {
        return QStringLiteral("%1: its subject is \"%2\", not \"%3\"").arg(strSequenceFile, sequence.m_strSubject, m_options.m_strSubject);
    }
    const QString strDate = m_options.m_date.toString(Qt::ISODate);
    if (!sequence.m_strDateTime.isEmpty() && sequence.m_strDateTime.left(strDate.size()) != strDate)
    {
        return QStringLiteral("%1: its date is \"%2\", not \"%3\"").arg(strSequenceFile, sequence.m_strDateTime, strDate);
    }
    if ((!strKind.isEmpty() && strKind != kind()) || QFileInfo::exists(QStringLiteral("%1/XML/%2.txt").arg(m_strFolder, strOtherKind)))
    {
        return QStringLiteral("%1: it is a sequence of the kind %2, in which a %3 result would not be listed")
            .arg(strSequenceFile, strOtherKind, kind());
    }
    QString strEntry;
    QByteArray baIndex;
    return readIndex(strEntry, baIndex);
}

/// The text of the index as it is, and the name of an entry that is free.
QString CImportTarget::readIndex(QString& strEntry, QByteArray& baIndex) const
{
    const QString strXml = m_strFolder + QLatin1String("/XML/");
    const QString strIndex = strXml + kind() + QLatin1String(".txt");
    OrmSettingsText text;
    if (QFileInfo::exists(strIndex))
    {
        QString strError;
        if (!OrmFileReader::read(strIndex, baIndex, &strError))
        {
            return strError;
        }
        if (!text.parse(baIndex, strIndex))
        {
            return text.lastError();
        }
        CPLSettingsFileWrapper index;
        index.setAutoMenuNameTag(kind() + QLatin1Char('_'));
        index.setMenuNameTag(QStringLiteral("MenuName"));
        index.setFileNameTag(QStringLiteral("FileName"));
        if (index.load(strIndex) != 0)
        {
            return index.lastError();
        }
        if (index.getMenuNames(kind()).contains(m_options.m_strName, Qt::CaseInsensitive))
        {
            return QStringLiteral("%1: there is a result \"%2\" already; give another --name").arg(strIndex, m_options.m_strName);
        }
    }
    int nEntry = 1;
    do
    {
        strEntry = QStringLiteral("%1_%2").arg(kind()).arg(nEntry++);
    } while (text.section(strEntry) != nullptr || QFileInfo::exists(strXml + strEntry + QLatin1String(".xml")));
    return {};
}

QString CImportTarget::write(SSavedResult& result)
{
    return isNew() ? writeNew(result) : writeBeside(result);
}

/// A new sequence is made beside its place and moved there when it is whole.
QString CImportTarget::writeNew(SSavedResult& result)
{
    const bool bStudy = QDir(m_options.m_strOut).exists();
    if (!bStudy && !QDir().mkpath(m_options.m_strOut))
    {
        return cannotBeMade(m_options.m_strOut);
    }
    result.m_strSequenceID = m_options.m_strSequence;
    QStringList lstClicks;
    for (int nClick = 1; nClick <= qMax(kMinClicks, result.m_lstChannels.size()); ++nClick)
    {
        lstClicks.append(SequenceFiles::clickNumber(result.m_strSequenceID, nClick));
    }
    result.m_lstClickNumbers = lstClicks.mid(0, result.m_lstChannels.size());

    CNewFolder folder;
    const QString strPlace = QDir(m_options.m_strOut).filePath(result.m_strSequenceID);
    const QString strMade = QStringLiteral("%1/.%2.%3")
                                .arg(m_options.m_strOut, result.m_strSequenceID)
                                .arg(QRandomGenerator::global()->generate64(), 16, 16, QLatin1Char('0'));
    const auto make = [&]() -> QString
    {
        if (!folder.make(strMade) || !QDir(strMade).mkdir(QStringLiteral("XML")))
        {
            return cannotBeMade(strMade);
        }
        for (int nClick = 0; nClick < lstClicks.size(); ++nClick)
        {
            if (!QDir(strMade).mkdir(lstClicks.at(nClick)))
            {
                return cannotBeMade(lstClicks.at(nClick));
            }
            const QString strProblem = written(QStringLiteral("%1/%2/ClickInfo.txt").arg(strMade, lstClicks.at(nClick)),
                                               SequenceFiles::clickInfo(clickOf(result, result.m_lstChannels.value(nClick))));
            if (!strProblem.isEmpty())
            {
                return strProblem;
            }
        }
        const QString strXml = strMade + QLatin1String("/XML/");
        const QString strEntry = kind() + QLatin1String("_1");
        QString strProblem = written(strXml + strEntry + QLatin1String(".xml"), SavedResultDocument::text(result, QStringLiteral("2.0")));
        if (strProblem.isEmpty())
        {
            strProblem = written(strXml + kind() + QLatin1String(".txt"), SequenceFiles::indexEntry(strEntry, m_options.m_strName));
        }
        if (strProblem.isEmpty())
        {
            strProblem = written(strMade + QLatin1String("/SequenceInfo.txt"),
                                 SequenceFiles::sequenceInfo(result.m_strSequenceID, m_options.m_strSubject,
                                                             m_options.m_date.toString(Qt::ISODate), lstClicks));
        }
        if (strProblem.isEmpty() && !folder.moveTo(strPlace))
        {
            strProblem = QStringLiteral("%1: %2").arg(strPlace, qt_error_string(errno));
        }
        m_strDocument = QStringLiteral("%1/XML/%2.xml").arg(strPlace, strEntry);
        return strProblem;
    };
    const QString strProblem = make();
    if (!strProblem.isEmpty() && !bStudy)
    {
        folder.remove();
        QDir().rmdir(m_options.m_strOut);
    }
    return strProblem;
}

/// The document first: an index never names one that is not there.
QString CImportTarget::writeBeside(SSavedResult& result)
{
    result.m_strSequenceID = m_strSequenceID;
    for (int n = 0; n < result.m_lstChannels.size(); ++n)
    {
        result.m_lstClickNumbers.append(m_lstClicks.value(qMin(n, m_lstClicks.size() - 1)));
    }
    const QString strXml = m_strFolder + QLatin1String("/XML/");
    QString strEntry;
    QByteArray baIndex;
    const bool bXml = QDir(strXml).exists();
    if (!bXml && !QDir().mkpath(strXml))
    {
        return cannotBeMade(strXml);
    }
    QString strProblem = readIndex(strEntry, baIndex);
    m_strDocument = strXml + strEntry + QLatin1String(".xml");
    if (strProblem.isEmpty())
    {
        strProblem = written(m_strDocument, SavedResultDocument::text(result, QStringLiteral("2.0")));
    }
    if (strProblem.isEmpty())
    {
        if (!baIndex.isEmpty() && !baIndex.endsWith('\n'))
        {
            baIndex += '\n';
        }
        strProblem = written(strXml + kind() + QLatin1String(".txt"), baIndex + SequenceFiles::indexEntry(strEntry, m_options.m_strName));
        if (!strProblem.isEmpty())
        {
            QFile::remove(m_strDocument);
        }
    }
    if (!strProblem.isEmpty() && !bXml)
    {
        QDir().rmdir(strXml);
    }
    return strProblem;
}
