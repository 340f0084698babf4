#include "ExportOptions.h"

#include <algorithm>

namespace
{
void setUp(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QString::fromUtf8(
        "Writes saved results as files for other viewers.\n"
        "\n"
        "The surface has its density maps as numbers per vertex. The volume is the source as it was saved, before it is refined to be "
        "shown: "
        "the amount per voxel in the unit of the result, on a grid whose points are the centres of the voxels, with 0 where the result "
        "has none. The voxels are a table with one line for each. Lengths are millimetres. Numbers have single precision, or double "
        "precision where they were divided by a calibration, and come back as they were when they are imported again.\n"
        "\n"
        "Each file is written whole or not at all, and none unless all can be made. Ends with 0 if everything asked for was written, with "
        "1 and one line per reason if not, with 2 for wrong usage."));
    parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("Folders in which sequences are searched."),
                                 QStringLiteral("FOLDER..."));
    CommandLine::addHelpAndVersion(parser);
    parser.addOptions(
        {{"load",
          "Write the result whose \"KIND SEQUENCE/NAME\" matches; *, ? and [...] are wildcards. May be given again. Without it: all "
          "results.",
          "PATTERN"},
         {"surface", "Write the surface: .vtp (VTK) or .ply. Only one result may match.", "FILE"},
         {"volume", "Write the volume: .vti (VTK) or .nrrd. Only one result may match.", "FILE"},
         {"voxels", "Write the voxels as comma-separated values. Only one result may match.", "FILE"},
         {"out",
          "Write surface (.vtp), volume (.vti) and voxels (.csv) of every result into this folder, named by kind, sequence and name.",
          "FOLDER"},
         {"as-stored", "Amounts as the result stores them, not divided to be in its unit."},
         {"quiet", "Only failures are told."}});
}

bool endsWithOneOf(const QString& strFile, const QStringList& lstEnds)
{
    return strFile.isEmpty() || std::any_of(lstEnds.begin(), lstEnds.end(),
                                            [&](const QString& strEnd) { return strFile.endsWith(strEnd, Qt::CaseInsensitive); });
}

QString readAll(const QCommandLineParser& parser, SExportOptions& options)
{
    options.m_bAsStored = parser.isSet(QStringLiteral("as-stored"));
    options.m_lstFolders = parser.positionalArguments();
    options.m_strSurface = parser.value(QStringLiteral("surface"));
    options.m_strVolume = parser.value(QStringLiteral("volume"));
    options.m_strVoxels = parser.value(QStringLiteral("voxels"));
    options.m_strOut = parser.value(QStringLiteral("out"));
    if (options.m_lstFolders.isEmpty())
    {
        return QStringLiteral("At least one folder is needed.");
    }
    const QString strNoPattern = CommandLine::readPatterns(parser, options.m_lstPatterns);
    if (!strNoPattern.isEmpty())
    {
        return strNoPattern;
    }
    if (!endsWithOneOf(options.m_strSurface, {QStringLiteral(".vtp"), QStringLiteral(".ply")}))
    {
        return QStringLiteral("--surface takes a file whose name ends in .vtp or .ply.");
    }
    if (!endsWithOneOf(options.m_strVolume, {QStringLiteral(".vti"), QStringLiteral(".nrrd")}))
    {
        return QStringLiteral("--volume takes a file whose name ends in .vti or .nrrd.");
    }
    if ((options.m_strSurface + options.m_strVolume + options.m_strVoxels + options.m_strOut).isEmpty())
    {
        return QStringLiteral("Nothing is to be written: --surface, --volume, --voxels or --out is needed.");
    }
    return {};
}
} // namespace

QString ExportOptions::read(const QStringList& lstArguments, SExportOptions& options)
{
    return CommandLine::read<SExportOptions>(lstArguments, setUp, {readAll}, options);
}

QString ExportOptions::help()
{
    return CommandLine::help(setUp);
}
