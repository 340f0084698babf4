// Runs a fuzzing target over files instead of under libFuzzer: ./replay_x FILE-OR-FOLDER...

#include "FuzzTarget.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cstdio>

/// What a target that needs it does first; libFuzzer calls it too.
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* pnArguments, char*** pppArguments);

namespace
{
QStringList filesOf(const QString& strPath)
{
    if (!QFileInfo(strPath).isDir())
        return {strPath};
    QStringList lstFiles;
    const QFileInfoList lstEntries = QDir(strPath).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& objEntry : lstEntries)
        lstFiles.append(objEntry.filePath());
    return lstFiles;
}
} // namespace

int main(int argc, char* argv[])
{
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    int nFiles = 0;
    for (int i = 1; i < argc; ++i)
    {
        const QStringList lstFiles = filesOf(QFile::decodeName(argv[i]));
        for (const QString& strFile : lstFiles)
        {
            QFile objFile(strFile);
            if (!objFile.open(QIODevice::ReadOnly))
            {
                std::fprintf(stderr, "%s cannot be read\n", qPrintable(strFile));
                return 1;
            }
            const QByteArray baInput = objFile.readAll();
            std::fprintf(stderr, "%s\n", qPrintable(strFile)); // the last one named is the one that failed
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(baInput.constData()), static_cast<std::size_t>(baInput.size()));
            ++nFiles;
        }
    }
    std::printf("%d inputs, readers took %ld and refused %ld\n", nFiles, FuzzTarget::takenInputs(), FuzzTarget::refusedInputs());
    return nFiles > 0 && FuzzTarget::takenInputs() > 0 && FuzzTarget::refusedInputs() > 0 ? 0 : 1;
}
