#include "CommandLine.h"
#include "PhantomStudy.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{
/// Largest figures that make sense for a phantom; beyond them a slip of the keyboard is the likelier reason.
constexpr int kMaxTimePoints = 500;
constexpr int kMinVertices = 14;
constexpr int kMaxVertices = 2'000'000;
constexpr double kMinVoxelSize = 0.1;
constexpr double kMaxVoxelSize = 4.0;

/// Options from the command line. An empty text when they are right, else what is wrong with them.
QString readOptions(const QCommandLineParser& parser, SPhantomOptions& options)
{
    if (parser.positionalArguments().size() != 1)
    {
        return QStringLiteral("One folder is needed for the study.");
    }
    options.m_strFolder = parser.positionalArguments().constFirst();
    const std::optional<int> nTimePoints = CommandLine::wholeNumber(parser, QStringLiteral("timepoints"), 1, kMaxTimePoints);
    const std::optional<int> nVertices = CommandLine::wholeNumber(parser, QStringLiteral("vertices"), kMinVertices, kMaxVertices);
    bool bVoxelSize = false;
    bool bSeed = false;
    options.m_nTimePoints = nTimePoints.value_or(0);
    options.m_nVertices = nVertices.value_or(0);
    options.m_fVoxelSize = parser.value(QStringLiteral("voxel-size")).toDouble(&bVoxelSize);
    options.m_nSeed = parser.value(QStringLiteral("seed")).toUInt(&bSeed);
    options.m_strFormat = parser.value(QStringLiteral("format"));
    const QString strKind = parser.value(QStringLiteral("kind"));
    options.m_bSola = strKind == QLatin1String("SOLA") || strKind == QLatin1String("both");
    options.m_bNova = strKind == QLatin1String("NOVA") || strKind == QLatin1String("both");
    if (!nTimePoints)
    {
        return QStringLiteral("--timepoints takes a whole number from 1 to %1.").arg(kMaxTimePoints);
    }
    if (!options.m_bSola && !options.m_bNova)
    {
        return QStringLiteral("--kind takes SOLA, NOVA or both.");
    }
    if (!nVertices)
    {
        return QStringLiteral("--vertices takes a whole number from %1 to %2.").arg(kMinVertices).arg(kMaxVertices);
    }
    if (!bVoxelSize || !(options.m_fVoxelSize >= kMinVoxelSize && options.m_fVoxelSize <= kMaxVoxelSize))
    {
        return QStringLiteral("--voxel-size takes millimetres from %1 to %2.").arg(kMinVoxelSize).arg(kMaxVoxelSize);
    }
    if (options.m_strFormat != QLatin1String("1.0") && options.m_strFormat != QLatin1String("2.0"))
    {
        return QStringLiteral("--format takes 1.0 or 2.0.");
    }
    if (!bSeed)
    {
        return QStringLiteral("--seed takes a whole number from 0.");
    }
    return {};
}
} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    CommandLine::introduce(QStringLiteral("ormphantom"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes a study of a mouse-like phantom at several time points, with sources that grow."));
    const QCommandLineOption helpOption = parser.addHelpOption();
    const QCommandLineOption versionOption = parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("OUT"), QStringLiteral("Folder for the study."));
    parser.addOptions({{"timepoints", "Number of time points (5).", "N", "5"},
                       {"kind", "SOLA, NOVA or both (both).", "KIND", "both"},
                       {"vertices", "Vertices of the surface, about (2500).", "N", "2500"},
                       {"voxel-size", "Edge of a source voxel in millimetres (1).", "MM", "1"},
                       {"format", "Format version of the documents, 1.0 or 2.0 (2.0).", "VERSION", "2.0"},
                       {"seed", "The same seed makes the same study (1).", "N", "1"}});
    if (!parser.parse(QCoreApplication::arguments()))
    {
        CommandLine::tell({parser.errorText()});
        return CommandLine::kWrongUsage;
    }
    if (parser.isSet(helpOption))
    {
        parser.showHelp(CommandLine::kDone);
    }
    if (parser.isSet(versionOption))
    {
        parser.showVersion();
    }

    SPhantomOptions options;
    QString strError = readOptions(parser, options);
    if (!strError.isEmpty())
    {
        CommandLine::tell({strError});
        return CommandLine::kWrongUsage;
    }
    if (!CPhantomStudy(options).write(strError))
    {
        return CommandLine::tell({strError});
    }
    std::printf("%s: %d time points\n", qPrintable(options.m_strFolder), options.m_nTimePoints);
    return CommandLine::kDone;
}
