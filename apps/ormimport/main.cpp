#include "CubicVoxels.h"
#include "ImportOptions.h"
#include "ImportTarget.h"
#include "ImportedResult.h"

#include "OrmFileReader.h"
#include "SurfaceReaders.h"
#include "VolumeReaders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>

#include <clocale>
#include <cstdio>
#include <new>

namespace
{
constexpr int kLockMilliseconds = 60000; ///< how long another import into the same study is waited for

/// Puts the file's name before what is wrong with it.
QString ofFile(const QString& strFile, const QString& strProblem)
{
    return strProblem.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(strFile, strProblem);
}

QString readSurface(const SImportOptions& options, SOpenSurface& surface)
{
    QByteArray baContent;
    QString strProblem;
    if (!OrmFileReader::read(options.m_strSurface, baContent, &strProblem))
    {
        return strProblem;
    }
    strProblem = SurfaceReaders::read(options.m_strSurface, baContent, surface);
    if (strProblem.isEmpty())
    {
        strProblem = ImportedResult::chooseMaps(options.m_lstMaps, surface);
    }
    return ofFile(options.m_strSurface, strProblem);
}

QString readVolume(const SImportOptions& options, SOpenVolume& volume, SCubicVoxels& voxels)
{
    QByteArray baContent;
    QString strProblem;
    if (!OrmFileReader::read(options.m_strVolume, baContent, &strProblem))
    {
        return strProblem;
    }
    // A data file lies in the folder of its header or below it.
    const QString strFolder = QFileInfo(options.m_strVolume).path();
    const auto readSibling = [&](const QString& strName, QByteArray& baSibling)
    {
        QString strError;
        return OrmFileReader::readBeneath(strFolder, strName, baSibling, &strError) ? QString() : strError;
    };
    strProblem = VolumeReaders::read(options.m_strVolume, baContent, readSibling, volume);
    baContent.clear();
    if (strProblem.isEmpty())
    {
        CubicVoxels::turnTo(options.m_eSpace, volume);
        strProblem = CubicVoxels::from(volume, options.m_fVoxelSize, voxels);
    }
    return ofFile(options.m_strVolume, strProblem);
}

void tell(const SImportOptions& options, const QStringList& lstNotes)
{
    for (const QString& strNote : lstNotes)
    {
        if (!options.m_bQuiet && !strNote.isEmpty())
        {
            std::printf("%s\n", qPrintable(strNote));
        }
    }
}

void tellResult(const SImportOptions& options, const SSavedResult& result, const QString& strFile)
{
    double fStored = 0.0;
    for (const SSavedVoxel& voxel : result.m_vecVoxels)
    {
        fStored += static_cast<double>(voxel.m_fValue);
    }
    QStringList lstLines = {QStringLiteral("Surface: %1 vertices, %2 triangles; density maps %3")
                                .arg(result.m_vecVertices.size() / 3)
                                .arg(result.m_vecTriangles.size() / 3)
                                .arg(result.m_lstChannels.join(QStringLiteral(", "))),
                            QStringLiteral("Source: %1 voxels of %2 mm, %3 %4 in all")
                                .arg(result.m_vecVoxels.size())
                                .arg(result.m_strVoxelSize)
                                .arg(fStored / options.m_fDivisor, 0, 'g', 7)
                                .arg(options.m_strUnit)};
    if (options.m_fDivisor != 1.0)
    {
        lstLines.append(
            QStringLiteral("The result stores amounts that are %1 times as large; the tool divides by that.").arg(options.m_fDivisor));
    }
    lstLines.append(
        QStringLiteral("%1 %2/%3: written to %4")
            .arg(options.m_bNova ? QLatin1String("NOVA") : QLatin1String("SOLA"), result.m_strSequenceID, options.m_strName, strFile));
    tell(options, lstLines);
}

/// An empty text, or why nothing was written.
QString import(const SImportOptions& options)
{
    CImportTarget target(options);
    QString strProblem = target.find(); // before anything long
    SOpenSurface surface;
    SOpenVolume volume;
    SCubicVoxels voxels;
    SSavedResult result;
    if (strProblem.isEmpty())
    {
        strProblem = readSurface(options, surface);
    }
    if (strProblem.isEmpty())
    {
        strProblem = readVolume(options, volume, voxels);
    }
    if (strProblem.isEmpty())
    {
        strProblem = ImportedResult::fill(options, surface, voxels, result);
    }
    if (!strProblem.isEmpty())
    {
        return strProblem;
    }
    tell(options, surface.m_lstNotes + volume.m_lstNotes + voxels.m_lstNotes);
    surface = SOpenSurface();
    volume = SOpenVolume();
    voxels = SCubicVoxels();

    // Several imports may run at once; each finds what the one before wrote. The folder of all temporary files is there in any case.
    const QByteArray baStudy = QFileInfo(options.m_strOut).absoluteFilePath().toUtf8().toHex().right(150);
    QLockFile lock(QDir::temp().filePath(QStringLiteral("ormimport-%1.lock").arg(QString::fromLatin1(baStudy))));
    if (!lock.tryLock(kLockMilliseconds))
    {
        return QStringLiteral("%1: another import into this study does not end").arg(options.m_strOut);
    }
    CImportTarget current(options);
    strProblem = current.find();
    if (strProblem.isEmpty())
    {
        strProblem = current.write(result);
    }
    if (strProblem.isEmpty())
    {
        tell(options, {ImportedResult::misplaced(result)});
        tellResult(options, result, current.documentFile());
    }
    return strProblem;
}
} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    CommandLine::introduce(QStringLiteral("ormimport"));
    std::setlocale(LC_NUMERIC, "C");

    SImportOptions options;
    QString strProblem = ImportOptions::read(QCoreApplication::arguments(), options);
    if (const std::optional<int> nExit = CommandLine::answer(strProblem, options, ImportOptions::help))
    {
        return *nExit;
    }
    try
    {
        strProblem = import(options);
    }
    catch (const std::bad_alloc&)
    {
        strProblem = QStringLiteral("%1 and %2: there is not enough memory for them").arg(options.m_strSurface, options.m_strVolume);
    }
    return CommandLine::tell(strProblem.isEmpty() ? QStringList() : QStringList(strProblem + QLatin1Char('.')));
}
