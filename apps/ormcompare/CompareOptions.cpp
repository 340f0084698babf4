#include "CompareOptions.h"

#include "OrmImageFile.h"
#include "OrmNumberText.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace
{
constexpr int kMinPixels = 50;
constexpr int kMaxPixels = 8000;
constexpr int kMaxFrames = 100000;
constexpr int kMaxJobs = 256;

/// The options that decide what a picture shows, beside the folders and results.
const char* const kLookNames[] = {"unit", "size", "rotate", "colors", "range", "log", "wavelength", "measure"};

/// The options that name files of their own.
const char* const kFileNames[] = {"view", "window", "report", "plot", "table", "growth"};

const QStringList& units()
{
    static const QStringList lstUnits = {QStringLiteral("photons/sec"), QStringLiteral("cells"),
                                         QString::fromUtf8("pmol M-\u00b9 cm-\u00b9"), QStringLiteral("pmol")};
    return lstUnits;
}

void setUp(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Loads the saved results of a study into the Longitudinal Study window and writes what it shows.\n"
                       "Ends with 0 if everything asked for was done, with 1 and one line per reason if not, with 2 for wrong usage."));
    parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("Folders in which sequences are searched."),
                                 QStringLiteral("FOLDER..."));
    CommandLine::addHelpAndVersion(parser);
    parser.addOptions(
        {{"load",
          "Load the results whose \"KIND SEQUENCE/NAME\" matches; *, ? and [...] are wildcards. May be given again. Without it: all "
          "results that the unit fits.",
          "PATTERN"},
         {"unit", "Unit of the results: " + units().join(QStringLiteral(", ")) + " (cells sets both kinds).", "UNIT"},
         {"view", "Write a picture of the view (bmp, jpg, png, eps, tif by its extension).", "FILE"},
         {"window", "Write a picture of the window.", "FILE"},
         {"report", "Write a report as JSON.", "FILE"},
         {"size", "Size of the view in pixels (1200x800).", "WxH", "1200x800"},
         {"rotate", "Angle of view in degrees, 0 to 360.", "DEG"},
         {"colors", "Colour table of the source volumes, by its name in the window.", "NAME"},
         {"range", "Colour range of the source volumes.", "MIN:MAX"},
         {"log", "Logarithmic colour scale."},
         {"wavelength", "Density map on the surfaces, by the name of its wavelength or image source.", "NAME"},
         {"measure",
          "Measure the flux under a rectangle in all pictures: two corners as fractions of the first picture, origin bottom left.",
          "X0,Y0,X1,Y1"},
         {"plot",
          "Write a plot: quantification, chi2 or voxelsize; SOLA: or NOVA: before it chooses the kind where both are loaded. May be given "
          "again.",
          "MEASURE=FILE"},
         {"table", "Write the figures of the results as comma-separated values.", "FILE"},
         {"growth",
          "Fit growth, value = A exp(rate x days), to each subject and kind: a table with rates, doubling times and their 95 % intervals "
          "(csv), or a picture of the points and fits, by its extension. May be given again.",
          "FILE"},
         {"like", "Show the results and the look of a PNG picture that this program wrote; give the folders too.", "PICTURE.png"},
         {"out", "Write the usual files into a folder: figure, plots, table, growth.", "DIR"},
         {"study-per-folder",
          "With --out: each folder in ROOT that holds sequences is a study, and gets its own folder in DIR. What is up to "
          "date is skipped. DIR/all.csv and DIR/growth.csv sum up.",
          "ROOT"},
         {"jobs", "Studies at a time (1).", "N", "1"},
         {"frames", "Repaint N times, turning by 360/N each, and report the times.", "N", "0"},
         {"quiet", "No progress on the terminal."}});
}

bool readSize(const QString& strText, QSize& size)
{
    const QRegularExpressionMatch match = QRegularExpression(QStringLiteral("^([0-9]{1,5})x([0-9]{1,5})$")).match(strText);
    size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    return match.hasMatch() && qMin(size.width(), size.height()) >= kMinPixels && qMax(size.width(), size.height()) <= kMaxPixels;
}

/// X0,Y0,X1,Y1, each from 0 to 1; two corners that differ both ways.
bool readRegion(const QString& strText, QRectF& region)
{
    const QStringList lstParts = strText.split(QLatin1Char(','));
    double fParts[4] = {};
    if (lstParts.size() != 4)
    {
        return false;
    }
    for (int nPart = 0; nPart < 4; ++nPart)
    {
        if (!OrmNumberText::toDouble(lstParts.at(nPart), fParts[nPart]) || fParts[nPart] < 0.0 || fParts[nPart] > 1.0)
        {
            return false;
        }
    }
    region = QRectF(QPointF(fParts[0], fParts[1]), QPointF(fParts[2], fParts[3]));
    return fParts[0] != fParts[2] && fParts[1] != fParts[3];
}

/// [KIND:]MEASURE=FILE
bool readPlot(const QString& strText, SPlotRequest& request)
{
    const QRegularExpressionMatch match = QRegularExpression(QStringLiteral("^(?:(SOLA|NOVA):)?(quantification|chi2|voxelsize)=(.+)$"),
                                                             QRegularExpression::DotMatchesEverythingOption)
                                              .match(strText);
    const QStringList lstMeasures = {QStringLiteral("quantification"), QStringLiteral("chi2"), QStringLiteral("voxelsize")};
    request.m_nKind = QStringList{QStringLiteral("SOLA"), QStringLiteral("NOVA")}.indexOf(match.captured(1));
    request.m_nMeasure = lstMeasures.indexOf(match.captured(2));
    request.m_strFile = match.captured(3);
    return match.hasMatch();
}

bool readRange(const QString& strText, SValueRange& range)
{
    const QStringList lstEnds = strText.split(QLatin1Char(':'));
    return lstEnds.size() == 2 && OrmNumberText::toDouble(lstEnds.at(0), range.m_fMin) &&
           OrmNumberText::toDouble(lstEnds.at(1), range.m_fMax) && range.m_fMin < range.m_fMax;
}

/// The unit and what else says how results are shown. Empty, or what is wrong.
QString readLook(const QCommandLineParser& parser, SCompareOptions& options)
{
    options.m_strUnit = parser.value(QStringLiteral("unit"));
    if (parser.isSet(QStringLiteral("unit")) && !units().contains(options.m_strUnit))
    {
        return QStringLiteral("--unit takes one of: %1.").arg(units().join(QStringLiteral(", ")));
    }
    if (!readSize(parser.value(QStringLiteral("size")), options.m_objSize))
    {
        return QStringLiteral("--size takes WIDTHxHEIGHT, each from %1 to %2 pixels.").arg(kMinPixels).arg(kMaxPixels);
    }
    if (parser.isSet(QStringLiteral("rotate")))
    {
        options.m_nRotate = CommandLine::wholeNumber(parser, QStringLiteral("rotate"), 0, 360);
        if (!options.m_nRotate)
        {
            return QStringLiteral("--rotate takes whole degrees from 0 to 360.");
        }
    }
    options.m_strColors = parser.value(QStringLiteral("colors"));
    if (parser.isSet(QStringLiteral("range")))
    {
        SValueRange range;
        if (!readRange(parser.value(QStringLiteral("range")), range))
        {
            return QStringLiteral("--range takes MIN:MAX, two numbers, the first one smaller.");
        }
        options.m_objRange = range;
    }
    options.m_bLog = parser.isSet(QStringLiteral("log"));
    options.m_strWavelength = parser.value(QStringLiteral("wavelength"));
    if (parser.isSet(QStringLiteral("measure")))
    {
        QRectF region;
        if (!readRegion(parser.value(QStringLiteral("measure")), region))
        {
            return QStringLiteral("--measure takes X0,Y0,X1,Y1, two different corners as fractions from 0 to 1.");
        }
        options.m_objRegion = region;
    }
    options.m_lstLook.clear();
    for (const char* pszName : kLookNames)
    {
        const QString strName = QLatin1String(pszName);
        if (strName == QLatin1String("log") ? options.m_bLog : parser.isSet(strName) || strName == QLatin1String("size"))
        {
            options.m_lstLook.append(options.m_bLog && strName == QLatin1String("log")
                                         ? QStringLiteral("--log")
                                         : QStringLiteral("--%1=%2").arg(strName, parser.value(strName)));
        }
    }
    return {};
}

/// The files that are to be written. Empty, or what is wrong.
QString readFiles(const QCommandLineParser& parser, SCompareOptions& options)
{
    options.m_strViewFile = parser.value(QStringLiteral("view"));
    options.m_strWindowFile = parser.value(QStringLiteral("window"));
    options.m_strReportFile = parser.value(QStringLiteral("report"));
    options.m_strTableFile = parser.value(QStringLiteral("table"));
    for (const QString& strPlot : parser.values(QStringLiteral("plot")))
    {
        SPlotRequest request;
        if (!readPlot(strPlot, request))
        {
            return QStringLiteral("--plot takes quantification=FILE, chi2=FILE or voxelsize=FILE.");
        }
        options.m_lstPlots.append(request);
    }
    options.m_lstGrowthFiles = parser.values(QStringLiteral("growth"));
    for (const QString& strFile : qAsConst(options.m_lstGrowthFiles))
    {
        const QString strExtension = QFileInfo(strFile).suffix().toLower();
        if (strExtension != QLatin1String("csv") && !OrmImageFile::extensions().contains(strExtension))
        {
            return QStringLiteral("--growth takes a file that ends in csv, %1.").arg(OrmImageFile::extensions().join(QStringLiteral(", ")));
        }
    }
    return {};
}

/// Which folders are studied, and how. Empty, or what is wrong.
QString readWork(const QCommandLineParser& parser, SCompareOptions& options)
{
    options.m_lstFolders = parser.positionalArguments();
    options.m_strRoot = parser.value(QStringLiteral("study-per-folder"));
    options.m_strOutFolder = parser.value(QStringLiteral("out"));
    options.m_strLike = parser.value(QStringLiteral("like"));
    const bool bStudies = parser.isSet(QStringLiteral("study-per-folder"));
    if (bStudies && (options.m_strRoot.isEmpty() || options.m_strOutFolder.isEmpty() || !options.m_lstFolders.isEmpty()))
    {
        return QStringLiteral("--study-per-folder takes one folder and needs --out DIR; other folders have no place beside it.");
    }
    if (!bStudies && options.m_lstFolders.isEmpty())
    {
        return QStringLiteral("At least one folder is needed.");
    }
    const auto given = [&parser](const char* pszName) { return parser.isSet(QLatin1String(pszName)); };
    if (given("out") && (options.m_strOutFolder.isEmpty() || std::any_of(std::begin(kFileNames), std::end(kFileNames), given)))
    {
        return QStringLiteral("--out takes a folder and names the files in it itself; leave out the options that name files.");
    }
    if (given("like") && (given("load") || given("out") || std::any_of(std::begin(kLookNames), std::end(kLookNames), given)))
    {
        return QStringLiteral("--like takes results and look from the picture; leave out --load, --out and the options of the look.");
    }
    if (given("like") && options.m_strLike.isEmpty())
    {
        return QStringLiteral("--like takes a picture.");
    }
    const std::optional<int> nJobs = CommandLine::wholeNumber(parser, QStringLiteral("jobs"), 1, kMaxJobs);
    if (!nJobs || (given("jobs") && !bStudies))
    {
        return QStringLiteral("--jobs takes a whole number from 1 to %1, together with --study-per-folder.").arg(kMaxJobs);
    }
    options.m_nJobs = *nJobs;
    const QString strNoPattern = CommandLine::readPatterns(parser, options.m_lstPatterns);
    if (!strNoPattern.isEmpty())
    {
        return strNoPattern;
    }
    const std::optional<int> nFrames = CommandLine::wholeNumber(parser, QStringLiteral("frames"), 0, kMaxFrames);
    if (!nFrames)
    {
        return QStringLiteral("--frames takes a whole number from 0 to %1.").arg(kMaxFrames);
    }
    options.m_nFrames = *nFrames;
    return {};
}
} // namespace

QString CompareOptions::read(const QStringList& lstArguments, SCompareOptions& options)
{
    return CommandLine::read<SCompareOptions>(lstArguments, setUp, {readWork, readLook, readFiles}, options);
}

QStringList CompareOptions::contentArguments(const SCompareOptions& options)
{
    QStringList lstArguments = options.m_lstLook;
    for (const QString& strPattern : options.m_lstPatterns)
    {
        lstArguments.append(QStringLiteral("--load=") + strPattern);
    }
    return lstArguments;
}

QString CompareOptions::takeLook(const QStringList& lstLook, SCompareOptions& options)
{
    QCommandLineParser parser;
    SCompareOptions look;
    QString strWrong = CommandLine::parse(QStringList{QString()} + lstLook, setUp, parser, look);
    // Whatever else the file names, only the look is taken from it.
    if (strWrong.isEmpty())
    {
        strWrong = readLook(parser, look);
    }
    if (!strWrong.isEmpty())
    {
        return strWrong;
    }
    if (look.m_lstLook != lstLook)
    {
        return QStringLiteral("The look names something else than a look.");
    }
    options.m_strUnit = look.m_strUnit;
    options.m_objSize = look.m_objSize;
    options.m_nRotate = look.m_nRotate;
    options.m_strColors = look.m_strColors;
    options.m_objRange = look.m_objRange;
    options.m_bLog = look.m_bLog;
    options.m_strWavelength = look.m_strWavelength;
    options.m_objRegion = look.m_objRegion;
    options.m_lstLook = look.m_lstLook;
    return {};
}

QString CompareOptions::help()
{
    return CommandLine::help(setUp);
}
