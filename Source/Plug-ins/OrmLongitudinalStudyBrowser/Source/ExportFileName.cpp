#include "ExportFileName.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <array>

namespace
{

constexpr int g_nLongestFileName = 185; ///< characters

/// A filter of the save dialog.
struct SFilter
{
    const char* pText;
    const char* pExtension;
    bool bOffered;
};

constexpr std::array<SFilter, 7> g_lstFilters = {{
    {"Bitmap Image (*.bmp)", "bmp", true},
    {"JPEG Image (*.jpg)", "jpg", true},
    {"PNG Image (*.png)", "png", true},
    {"Windows Metafile Format (*.wmf)", "wmf", false},
    {"Enhanced Metafile Format (*.emf)", "emf", false},
    {"Postscript Enhanced Metafile (*.eps)", "eps", true},
    {"Tagged Image File Format (*.tif)", "tif", true},
}};

constexpr std::array<const char*, 8> g_lstKnownExtensions = {"bmp", "jpg", "png", "eps", "emf", "wmf", "tif", "tiff"};

} // namespace

QString ExportFileName::offeredFilters()
{
    QStringList lstTexts;
    for (const SFilter& objFilter : g_lstFilters)
    {
        if (objFilter.bOffered)
        {
            lstTexts.append(QLatin1String(objFilter.pText));
        }
    }
    return lstTexts.join(QStringLiteral(";;"));
}

bool ExportFileName::isKnownExtension(const QString& strExtension)
{
    const QString strLower = strExtension.toLower();
    return std::any_of(g_lstKnownExtensions.begin(), g_lstKnownExtensions.end(),
                       [&](const char* pKnown) { return strLower == QLatin1String(pKnown); });
}

QString ExportFileName::extensionOfFilter(const QString& strFilter)
{
    const QString strLower = strFilter.toLower();
    for (const SFilter& objFilter : g_lstFilters)
    {
        if (strLower == QString::fromLatin1(objFilter.pText).toLower())
        {
            return QLatin1String(objFilter.pExtension);
        }
    }
    return QString();
}

QString ExportFileName::folder(const QString& strPath)
{
    return strPath.left(strPath.lastIndexOf(QLatin1Char('/')));
}

QString ExportFileName::formatToRemember(const QString& strPath)
{
    return strPath.right(strPath.size() - strPath.indexOf(QLatin1Char('.')) - 1);
}

QString ExportFileName::suffix(const QString& strPath)
{
    return QFileInfo(strPath).suffix().toLower();
}

QString ExportFileName::withoutClosingDot(const QString& strPath)
{
    return strPath.endsWith(QLatin1Char('.')) ? strPath.left(strPath.size() - 1) : strPath;
}

QString ExportFileName::withExtension(const QString& strPath, const QString& strSuffix, const QString& strExtension)
{
    const bool bHasIt = !strSuffix.isEmpty() && strSuffix == strExtension;
    return bHasIt ? strPath : strPath + QLatin1Char('.') + strExtension;
}

bool ExportFileName::isTooLong(const QString& strFileName)
{
    return strFileName.length() > g_nLongestFileName;
}

QString ExportFileName::tooLongText(const QString& strFileName)
{
    const int nMiddle = strFileName.length() / 2;
    return QStringLiteral("The path you entered, \n'") + strFileName.left(nMiddle) + QLatin1Char('\n') + strFileName.mid(nMiddle) +
           QStringLiteral("',\nis too long. Enter a shorter path");
}

QString ExportFileName::overwriteText(const QString& strFileName)
{
    return QStringLiteral("File: ") + strFileName + QStringLiteral(" exists in the specified path.\nOverwrite existing file?");
}
