#include "ExportOptions.h"
#include "ResultPattern.h"
#include "StoredResult.h"

#include "OrmFileWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <clocale>
#include <cstdio>
#include <new>

namespace
{
/// A file that is ready to be written.
struct SReadyFile
{
    QString m_strFile;
    QByteArray m_baContent;
};

/// What a result becomes under these names; an empty name is left out.
QString makeFiles(const SStoredResult& result, const QString& strSurface, const QString& strVolume, const QString& strVoxels,
                  std::vector<SReadyFile>& vecFiles)
{
    if (!strSurface.isEmpty())
    {
        const bool bPly = strSurface.endsWith(QLatin1String(".ply"), Qt::CaseInsensitive);
        vecFiles.push_back({strSurface, bPly ? OpenWriters::ply(result.m_surface, result.m_lstRemarks)
                                             : OpenWriters::vtp(result.m_surface, result.m_lstRemarks)});
    }
    if (!strVolume.isEmpty())
    {
        if (result.m_grid.m_vecValues.empty())
        {
            return QStringLiteral("the result has no voxels, of which a volume could be made");
        }
        const bool bNrrd = strVolume.endsWith(QLatin1String(".nrrd"), Qt::CaseInsensitive);
        vecFiles.push_back({strVolume, bNrrd ? OpenWriters::nrrd(result.m_grid, result.m_lstRemarks)
                                             : OpenWriters::vti(result.m_grid, result.m_lstRemarks)});
    }
    if (!strVoxels.isEmpty())
    {
        vecFiles.push_back({strVoxels, result.m_baVoxels});
    }
    return {};
}

/// Writes all of them. Where one fails those that were not there before are taken away again.
QString writeFiles(const std::vector<SReadyFile>& vecFiles)
{
    QStringList lstNew;
    for (const SReadyFile& file : vecFiles)
    {
        const bool bNew = !QFileInfo::exists(file.m_strFile);
        const QString strReason = OrmFileWriter::replace(file.m_strFile, file.m_baContent);
        if (!strReason.isEmpty())
        {
            for (const QString& strFile : qAsConst(lstNew))
            {
                QFile::remove(strFile);
            }
            return QStringLiteral("%1: %2").arg(file.m_strFile, strReason);
        }
        if (bNew)
        {
            lstNew.append(file.m_strFile);
        }
    }
    return {};
}

/// A file name of what a result is called: letters, digits and a few signs stay.
QString fileNameOf(const SResultPlace& place, QSet<QString>& setTaken)
{
    QString strName;
    for (const QChar c : QStringLiteral("%1 %2 %3").arg(place.m_strKind, place.m_strSequence, place.m_strName).left(150))
    {
        strName += c.isLetterOrNumber() || QStringLiteral("-_.,()").contains(c) ? c : QLatin1Char('_');
    }
    QString strUnique = strName;
    for (int n = 2; setTaken.contains(strUnique.toLower()); ++n)
    {
        strUnique = QStringLiteral("%1_%2").arg(strName).arg(n);
    }
    setTaken.insert(strUnique.toLower());
    return strUnique;
}

/// The results that the patterns choose. Appends a reason for each pattern that chooses none.
std::vector<SResultPlace> choose(const SExportOptions& options, QStringList& lstReasons)
{
    QStringList lstProblems;
    const std::vector<SResultPlace> vecAll = StoredResults::list(options.m_lstFolders, lstProblems);
    std::vector<bool> vecChosen(vecAll.size(), options.m_lstPatterns.isEmpty());
    for (const QString& strPattern : options.m_lstPatterns)
    {
        const QRegularExpression expression = ResultPattern::expression(strPattern);
        bool bMatched = false;
        for (std::size_t n = 0; n < vecAll.size(); ++n)
        {
            if (expression.match(vecAll[n].text()).hasMatch())
            {
                vecChosen[n] = bMatched = true;
            }
        }
        if (!bMatched)
        {
            lstReasons.append(QStringLiteral("No saved result matches \"%1\".").arg(strPattern));
        }
    }
    std::vector<SResultPlace> vecPlaces;
    for (std::size_t n = 0; n < vecAll.size(); ++n)
    {
        if (vecChosen[n])
        {
            vecPlaces.push_back(vecAll[n]);
        }
    }
    if (vecAll.empty())
    {
        lstReasons =
            QStringList{QStringLiteral("There is no saved result under %1.").arg(options.m_lstFolders.join(QStringLiteral(", ")))} +
            lstProblems;
    }
    return vecPlaces;
}

/// Writes one result. An empty text, or why nothing of it was written.
QString writeResult(const SExportOptions& options, const SResultPlace& place, QSet<QString>& setTaken)
{
    SStoredResult result;
    std::vector<SReadyFile> vecFiles;
    QString strProblem = StoredResults::read(place, options.m_bAsStored, result);
    if (strProblem.isEmpty())
    {
        strProblem = makeFiles(result, options.m_strSurface, options.m_strVolume, options.m_strVoxels, vecFiles);
    }
    if (strProblem.isEmpty() && !options.m_strOut.isEmpty())
    {
        const QString strStem = QDir(options.m_strOut).filePath(fileNameOf(place, setTaken));
        const bool bVoxels = !result.m_grid.m_vecValues.empty();
        strProblem = makeFiles(result, strStem + QLatin1String(".vtp"), bVoxels ? strStem + QLatin1String(".vti") : QString(),
                               strStem + QLatin1String(".csv"), vecFiles);
    }
    if (strProblem.isEmpty())
    {
        strProblem = writeFiles(vecFiles);
    }
    if (strProblem.isEmpty() && !options.m_bQuiet)
    {
        for (const SReadyFile& file : vecFiles)
        {
            std::printf("%s: written to %s\n", qPrintable(place.text()), qPrintable(file.m_strFile));
        }
    }
    return strProblem;
}

/// Why not everything was written; empty when it was.
QStringList exportAll(const SExportOptions& options)
{
    QStringList lstReasons;
    const std::vector<SResultPlace> vecPlaces = choose(options, lstReasons);
    if (!lstReasons.isEmpty())
    {
        return lstReasons;
    }
    const bool bSingle = !(options.m_strSurface + options.m_strVolume + options.m_strVoxels).isEmpty();
    if (bSingle && vecPlaces.size() > 1)
    {
        return {QStringLiteral("%1 saved results match, among them \"%2\" and \"%3\": choose one by --load, or write all by --out.")
                    .arg(vecPlaces.size())
                    .arg(vecPlaces[0].text(), vecPlaces[1].text())};
    }
    if (!options.m_strOut.isEmpty() && !QDir().mkpath(options.m_strOut))
    {
        return {QStringLiteral("%1: the folder cannot be made.").arg(options.m_strOut)};
    }
    QSet<QString> setTaken;
    for (const SResultPlace& place : vecPlaces)
    {
        QString strProblem;
        try
        {
            strProblem = writeResult(options, place, setTaken);
        }
        catch (const std::bad_alloc&)
        {
            strProblem = QStringLiteral("there is not enough memory for it");
        }
        if (!strProblem.isEmpty())
        {
            lstReasons.append(QStringLiteral("%1: %2%3").arg(place.text(), strProblem, strProblem.endsWith(QLatin1Char('.')) ? "" : "."));
        }
    }
    return lstReasons;
}
} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    CommandLine::introduce(QStringLiteral("ormexport"));
    std::setlocale(LC_NUMERIC, "C");

    SExportOptions options;
    const QString strWrong = ExportOptions::read(QCoreApplication::arguments(), options);
    const std::optional<int> nExit = CommandLine::answer(strWrong, options, ExportOptions::help);
    return nExit ? *nExit : CommandLine::tell(exportAll(options));
}
