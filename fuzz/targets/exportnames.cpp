// What the export makes of an entered path, against plain walks over its characters.

#include "ExportFileName.h"
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <QFileInfo>

#include <vector>

namespace
{
constexpr int nLongestName = 185;          ///< characters
constexpr std::size_t nLongestPath = 1024; ///< bytes of a path that is tried
const std::vector<std::string> vecKnown = {"bmp", "jpg", "png", "eps", "emf", "wmf", "tif", "tiff"};
const std::vector<std::string> vecParts = {"/",
                                           ".",
                                           "..",
                                           "/tmp",
                                           "/a.b/",
                                           "view",
                                           ".png",
                                           ".PNG",
                                           ".Tiff",
                                           ".tif",
                                           ".svg",
                                           ".png.",
                                           "\xC3\x84.JPG",
                                           "\xF0\x9F\x90\xAD",
                                           " ",
                                           "\xE2\x80\xAE",
                                           "name.with.points",
                                           ".hidden",
                                           "\xC4\xB0.bmp",
                                           "\xC3\x9F",
                                           "\n",
                                           ".eps"};

using FuzzTarget::demand;

/// Place of the first or the last of a character from a place on; -1 without one.
int firstOf(const QString& strText, QChar cWanted, int nFrom = 0)
{
    for (int i = nFrom; i < strText.size(); ++i)
    {
        if (strText.at(i) == cWanted)
            return i;
    }
    return -1;
}

int lastOf(const QString& strText, QChar cWanted)
{
    int nLast = -1;
    for (int i = firstOf(strText, cWanted); i >= 0; i = firstOf(strText, cWanted, i + 1))
        nLast = i;
    return nLast;
}

QString from(const QString& strText, int nStart)
{
    QString strRest;
    for (int i = nStart; i < strText.size(); ++i)
        strRest += strText.at(i);
    return strRest;
}

QString before(const QString& strText, int nEnd)
{
    QString strStart;
    for (int i = 0; i < nEnd; ++i)
        strStart += strText.at(i);
    return strStart;
}

bool isKnown(const QString& strExtension)
{
    for (const std::string& strKnown : vecKnown)
    {
        if (strExtension.toLower() == QString::fromStdString(strKnown))
            return true;
    }
    return false;
}

void compareParts(const QString& strPath)
{
    const int nSlash = lastOf(strPath, QLatin1Char('/'));
    demand(ExportFileName::folder(strPath) == (nSlash < 0 ? strPath : before(strPath, nSlash)), "folder");
    demand(ExportFileName::formatToRemember(strPath) == from(strPath, firstOf(strPath, QLatin1Char('.')) + 1), "format to remember");
    const QString strName = from(strPath, nSlash + 1);
    const int nPoint = lastOf(strName, QLatin1Char('.'));
    const QString strSuffix = nPoint < 0 ? QString() : from(strName, nPoint + 1).toLower();
    demand(ExportFileName::suffix(strPath) == strSuffix, "suffix \"" + ExportFileName::suffix(strPath).toStdString() + "\"");
    demand(ExportFileName::isKnownExtension(strSuffix) == isKnown(strSuffix), "whether the extension is known");
    const bool bPoint = lastOf(strPath, QLatin1Char('.')) == strPath.size() - 1 && !strPath.isEmpty();
    demand(ExportFileName::withoutClosingDot(strPath) == before(strPath, strPath.size() - (bPoint ? 1 : 0)),
           "path without a closing point");
}

void compareTexts(const QString& strName)
{
    demand(ExportFileName::isTooLong(strName) == (from(strName, nLongestName).size() > 0), "whether the name is too long");
    const QString strText = ExportFileName::tooLongText(strName);
    const int nHalf = strName.size() / 2;
    demand(strText == QStringLiteral("The path you entered, \n'") + before(strName, nHalf) + QLatin1Char('\n') + from(strName, nHalf) +
                          QStringLiteral("',\nis too long. Enter a shorter path"),
           "the text of a name that is too long");
    demand(ExportFileName::overwriteText(strName) ==
               QStringLiteral("File: ") + strName + QStringLiteral(" exists in the specified path.\nOverwrite existing file?"),
           "the question before overwriting");
}

/// The steps of an export up to the path that is written.
void repair(const QString& strEntered, const QString& strFilter)
{
    const QString strSuffix = ExportFileName::suffix(strEntered);
    QString strPath = ExportFileName::withoutClosingDot(strEntered);
    const bool bKnown = ExportFileName::isKnownExtension(strSuffix);
    const QString strExtension = ExportFileName::extensionOfFilter(strFilter);
    if (!bKnown)
        strPath = ExportFileName::withExtension(strPath, strSuffix, strExtension);
    const QString strKept = ExportFileName::withoutClosingDot(strEntered);
    demand(before(strPath, strKept.size()) == strKept, "the entered path is changed: " + strPath.toStdString());
    demand(!bKnown || strPath == strKept, "a known extension got another one: " + strPath.toStdString());
    demand(bKnown || strExtension.isEmpty() || ExportFileName::suffix(strPath) == strExtension,
           "the filter's extension is missing: " + strPath.toStdString());
    demand(from(strPath, strKept.size()).size() <= 1 + strExtension.size(), "more than an extension was appended");
    demand(lastOf(strPath, QLatin1Char('/')) == lastOf(strKept, QLatin1Char('/')), "the folder is changed");
    FuzzTarget::tookInput(bKnown);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    CFuzzInput objIn(pData, nSize);
    std::string strPath;
    int nFilter = static_cast<int>(nSize);
    if (FuzzTarget::isChoices(pData, nSize))
    {
        objIn.byte();
        nFilter = objIn.byte();
        while (objIn.left() > 0 && strPath.size() < nLongestPath)
            strPath += objIn.rarely(8) ? std::string(160U + objIn.below(40), 'n') : objIn.oneOf(vecParts);
    }
    else
    {
        strPath = objIn.text(nLongestPath);
    }
    const QStringList lstFilters = ExportFileName::offeredFilters().split(QStringLiteral(";;")) +
                                   QStringList{QStringLiteral("Windows Metafile Format (*.wmf)"), QString()};
    const QString strText = QString::fromStdString(strPath);
    compareParts(strText);
    compareTexts(strText);
    repair(strText, lstFilters.at(nFilter % lstFilters.size()));
    return 0;
}
