#include "ImportOptions.h"

#include "OrmNumberText.h"
#include "ResultUnitNames.h"
#include "ResultUnits.h"
#include "SurfaceReaders.h"
#include "VolumeReaders.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

namespace
{
constexpr int kMaxNameLength = 100;

void setUp(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QString::fromUtf8(
        "Makes a saved result of a surface and a source volume of other programs, in a new sequence of a study or in one that is there. "
        "Nothing that exists is changed but the list of results of the sequence.\n"
        "\n"
        "SURFACE is PLY (ASCII or binary), STL (ASCII or binary; corners at the same place become one vertex) or OBJ. Each number per "
        "vertex "
        "of a PLY file beyond coordinates, normals, colours and texture coordinates becomes a density map. A surface without one gets a "
        "map "
        "without values, since the tool shows no result without a map.\n"
        "VOLUME is NIfTI-1 (.nii, .nii.gz, or .hdr with its .img), MetaImage (.mha, or .mhd with its data file) or NRRD (.nrrd, or .nhdr "
        "with its data file), raw or compressed. Its numbers are taken for amounts per voxel in UNIT, not for amounts per volume. NaN is "
        "taken for an empty voxel and so is a number below 0, and how many there were is told; an infinite number is refused. Where the "
        "voxels are no cubes along x, y and z, the amounts are spread over a grid of cubes, which keeps the total.\n"
        "Surface and volume must share their coordinates. A file holds up to 1 GiB.\n"
        "\n"
        "Ends with 0 if the result was written, with 1 and the reason if nothing was, with 2 for wrong usage."));
    CommandLine::addHelpAndVersion(parser);
    parser.addOptions(
        {{"surface", "Surface (.ply, .stl, .obj).", "FILE"},
         {"volume", "Source volume (.nii, .nii.gz, .hdr, .mha, .mhd, .nrrd, .nhdr).", "FILE"},
         {"kind", "SOLA (luminescent) or NOVA (fluorescent).", "KIND"},
         {"subject", "Name of the subject.", "NAME"},
         {"date", "Date of the time point.", "YYYY-MM-DD"},
         {"out", "Study folder; made where it is missing.", "STUDY"},
         {"sequence", "ID of the sequence; one that the study has gets one result more. Without it: made of subject, date and kind.", "ID"},
         {"name", "Name of the result. Without it: that of the volume's file.", "RESULT"},
         {"maps",
          "Density maps in this order: properties of the surface by name, each with =NAME behind it if it is to be called otherwise, such "
          "as "
          "density_560=560. Where none of the names is a property they name the properties one after the other. Without it: all "
          "properties, "
          "by their names.",
          "NAME,..."},
         {"unit",
          QString::fromUtf8(
              "What the volume's numbers are and the tool shows: photons/sec (SOLA) or pmol M-1 cm-1 (NOVA) without it; cells, "
              "pmol (NOVA)."),
          "UNIT"},
         {"unit-value", "For cells and pmol: the stored amount per cell, or per molecule of dye.", "U"},
         {"as-stored", "The volume's numbers are amounts as results store them, which the tool divides by U for cells, by U and 6.022e11 "
                       "for pmol, and by "
                       "1e-7 for pmol M-1 cm-1."},
         {"surface-unit", "Unit of the surface's coordinates: m, cm, mm or um (mm). Volumes say theirs.", "UNIT", "mm"},
         {"space",
          "Where the surface's axes point to: RAS or LPS. A volume that says the same of its own is turned to it. Without it coordinates "
          "are "
          "taken as they are.",
          "SPACE"},
         {"voxel-size", "Edge of the cubic voxels. Without it: the smallest spacing of the volume.", "MM"},
         {"emission", "Emission filter in nm (NOVA).", "NM"},
         {"excitation", "Excitation filter in nm (NOVA).", "NM"},
         {"quiet", "Only failures are told."}});
}

/// A text that can stand behind a key of a settings file, in a list and in a document.
bool isPlainName(const QString& strName)
{
    const auto isBad = [](QChar c) { return !c.isPrint(); };
    return !strName.isEmpty() && strName == strName.trimmed() && strName.size() <= kMaxNameLength &&
           std::none_of(strName.begin(), strName.end(), isBad);
}

/// Letters, digits, '.', '-' and '_': the name of a folder everywhere.
bool isFolderName(const QString& strName)
{
    const auto isBad = [](QChar c)
    {
        return !((c >= QLatin1Char('a') && c <= QLatin1Char('z')) || (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
                 (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || QStringLiteral("._-").contains(c));
    };
    return !strName.isEmpty() && strName.size() <= kMaxNameLength && !strName.startsWith(QLatin1Char('.')) &&
           std::none_of(strName.begin(), strName.end(), isBad);
}

QString madeSequence(const SImportOptions& options)
{
    QString strLetters;
    for (const QChar c : options.m_strSubject)
    {
        strLetters += isFolderName(QString(c)) ? c : QLatin1Char('_');
    }
    return QStringLiteral("%1_%2_%3").arg(strLetters, options.m_date.toString(QStringLiteral("yyyyMMdd")), options.m_bNova ? "F" : "L");
}

QString madeName(const QString& strVolume)
{
    QString strName = QFileInfo(strVolume).fileName();
    strName = strName.endsWith(QLatin1String(".gz"), Qt::CaseInsensitive) ? strName.chopped(3) : strName;
    return strName.left(strName.lastIndexOf(QLatin1Char('.')));
}

QString readNames(const QCommandLineParser& parser, SImportOptions& options)
{
    options.m_strSubject = parser.value(QStringLiteral("subject"));
    if (!isPlainName(options.m_strSubject))
    {
        return QStringLiteral("--subject takes a name of up to %1 characters.").arg(kMaxNameLength);
    }
    options.m_date = QDate::fromString(parser.value(QStringLiteral("date")), Qt::ISODate);
    if (!options.m_date.isValid() || options.m_date.toString(Qt::ISODate) != parser.value(QStringLiteral("date")))
    {
        return QStringLiteral("--date takes a day as YYYY-MM-DD.");
    }
    options.m_strSequence = parser.isSet(QStringLiteral("sequence")) ? parser.value(QStringLiteral("sequence")) : madeSequence(options);
    if (!isFolderName(options.m_strSequence))
    {
        return QStringLiteral("--sequence takes letters, digits, '.', '-' and '_', up to %1 of them, and no '.' first.")
            .arg(kMaxNameLength);
    }
    options.m_strName = parser.isSet(QStringLiteral("name")) ? parser.value(QStringLiteral("name")) : madeName(options.m_strVolume);
    if (!isPlainName(options.m_strName))
    {
        return QStringLiteral("--name takes a name of up to %1 characters.").arg(kMaxNameLength);
    }
    options.m_lstMaps = parser.value(QStringLiteral("maps")).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (QString& strMap : options.m_lstMaps)
    {
        strMap = strMap.trimmed();
    }
    if (parser.isSet(QStringLiteral("maps")) &&
        (options.m_lstMaps.isEmpty() || !std::all_of(options.m_lstMaps.begin(), options.m_lstMaps.end(), isPlainName)))
    {
        return QStringLiteral("--maps takes names with commas between them.");
    }
    return {};
}

QString readUnit(const QCommandLineParser& parser, SImportOptions& options)
{
    const QStringList lstUnits = ResultUnitNames::ofKind(options.m_bNova);
    options.m_strUnit =
        parser.isSet(QStringLiteral("unit")) ? ResultUnitNames::written(parser.value(QStringLiteral("unit"))) : lstUnits.constFirst();
    if (!lstUnits.contains(options.m_strUnit))
    {
        return QStringLiteral("--unit takes one of: %1.").arg(lstUnits.join(QStringLiteral(", ")));
    }
    options.m_strUnitValue = parser.value(QStringLiteral("unit-value"));
    const QString strType = ResultUnitNames::measurementType(options.m_strUnit);
    double fValue = 0.0;
    if (strType.isEmpty() != options.m_strUnitValue.isEmpty())
    {
        return strType.isEmpty() ? QStringLiteral("--unit-value goes with --unit cells or pmol alone.")
                                 : QStringLiteral("--unit %1 needs a --unit-value.").arg(options.m_strUnit);
    }
    options.m_fDivisor = ResultUnits::divisor(options.m_bNova ? 1 : 0, strType, options.m_strUnitValue);
    if (!strType.isEmpty() && (!OrmNumberText::toDouble(options.m_strUnitValue, fValue) || !(fValue > 0.0) || !(options.m_fDivisor > 0.0)))
    {
        return QStringLiteral("--unit-value takes a number above 0.");
    }
    options.m_bAsStored = parser.isSet(QStringLiteral("as-stored"));
    return {};
}

QString readGeometry(const QCommandLineParser& parser, SImportOptions& options)
{
    const QStringList lstUnits = {"m", "cm", "mm", "um"};
    const int nUnit = lstUnits.indexOf(parser.value(QStringLiteral("surface-unit")));
    if (nUnit < 0)
    {
        return QStringLiteral("--surface-unit takes m, cm, mm or um.");
    }
    options.m_fSurfaceUnit = std::array<double, 4>{1000.0, 10.0, 1.0, 0.001}[static_cast<std::size_t>(nUnit)];
    const QString strSpace = parser.value(QStringLiteral("space"));
    options.m_eSpace = strSpace == QLatin1String("RAS") ? ESpace::RAS : strSpace == QLatin1String("LPS") ? ESpace::LPS : ESpace::Unknown;
    if (parser.isSet(QStringLiteral("space")) && options.m_eSpace == ESpace::Unknown)
    {
        return QStringLiteral("--space takes RAS or LPS.");
    }
    const QString strSize = parser.value(QStringLiteral("voxel-size"));
    if (parser.isSet(QStringLiteral("voxel-size")) &&
        (!OrmNumberText::toDouble(strSize, options.m_fVoxelSize) || !(options.m_fVoxelSize >= 1e-3 && options.m_fVoxelSize <= 100.0)))
    {
        return QStringLiteral("--voxel-size takes millimetres from 0.001 to 100.");
    }
    options.m_strEmission = parser.value(QStringLiteral("emission"));
    options.m_strExcitation = parser.value(QStringLiteral("excitation"));
    for (const QString& strFilter : {options.m_strEmission, options.m_strExcitation})
    {
        double fFilter = 0.0;
        if (!strFilter.isEmpty() && (!OrmNumberText::toDouble(strFilter, fFilter) || !(fFilter > 0.0)))
        {
            return QStringLiteral("--emission and --excitation take nanometres above 0.");
        }
    }
    if (!options.m_bNova && !(options.m_strEmission + options.m_strExcitation).isEmpty())
    {
        return QStringLiteral(
            "--emission and --excitation go with --kind NOVA; the wavelengths of a SOLA result are the names of its maps.");
    }
    return {};
}

QString readFiles(const QCommandLineParser& parser, SImportOptions& options)
{
    if (!parser.positionalArguments().isEmpty())
    {
        return QStringLiteral("\"%1\" belongs to no option.").arg(parser.positionalArguments().constFirst());
    }
    for (const char* pszNeeded : {"surface", "volume", "kind", "subject", "date", "out"})
    {
        if (parser.value(QLatin1String(pszNeeded)).isEmpty())
        {
            return QStringLiteral("--%1 is needed.").arg(QLatin1String(pszNeeded));
        }
    }
    options.m_strSurface = parser.value(QStringLiteral("surface"));
    options.m_strVolume = parser.value(QStringLiteral("volume"));
    options.m_strOut = parser.value(QStringLiteral("out"));
    if (!SurfaceReaders::isKnown(options.m_strSurface))
    {
        return QStringLiteral("--surface takes a file whose name ends in .ply, .stl or .obj.");
    }
    if (!VolumeReaders::isKnown(options.m_strVolume))
    {
        return QStringLiteral("--volume takes a file whose name ends in .nii, .nii.gz, .hdr, .mha, .mhd, .nrrd or .nhdr.");
    }
    options.m_bNova = parser.value(QStringLiteral("kind")) == QLatin1String("NOVA");
    if (!options.m_bNova && parser.value(QStringLiteral("kind")) != QLatin1String("SOLA"))
    {
        return QStringLiteral("--kind takes SOLA or NOVA.");
    }
    return {};
}
} // namespace

QString ImportOptions::read(const QStringList& lstArguments, SImportOptions& options)
{
    return CommandLine::read<SImportOptions>(lstArguments, setUp, {readFiles, readNames, readUnit, readGeometry}, options);
}

QString ImportOptions::help()
{
    return CommandLine::help(setUp);
}
