#include "COrmPreference.h"

#include "CSettingsStore.h"

#include <QStandardPaths>
#include <QStringList>

#include <algorithm>

namespace
{
const QString g_strColorBar = QStringLiteral("colorBar");
const QString g_strView = QStringLiteral("view3D");
const QString g_strExport = QStringLiteral("export");
constexpr int g_nSmallestFont = 4;
constexpr int g_nLargestFont = 72;

struct SState
{
    SState()
    {
        objStore.setFile(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                         QStringLiteral("/Ormelle/preferences.json"));
    }

    CSettingsStore objStore;
    COrmSettings objSettings{objStore};
    COrmSignalHandler objHub;
};

SState& state()
{
    static SState s_objState;
    return s_objState;
}

/// The fields of the record by kind, with the names they have in the store and their defaults.
struct SColorField
{
    QColor S3DViewSettings::*pField;
    const char* pszKey;
    QRgb nDefault;
};
struct SFlagField
{
    bool S3DViewSettings::*pField;
    const char* pszKey;
};
struct STextField
{
    QString S3DViewSettings::*pField;
    const char* pszKey;
    const char* pszDefault;
};

const SColorField g_lstColors[] = {
    {&S3DViewSettings::clrBackground, "background", qRgb(0, 0, 0)},   {&S3DViewSettings::clrAxes, "axes", qRgb(160, 160, 160)},
    {&S3DViewSettings::clrBoundingBox, "box", qRgb(110, 110, 110)},   {&S3DViewSettings::clrGrid, "grid", qRgb(70, 70, 70)},
    {&S3DViewSettings::clrGridText, "gridText", qRgb(190, 190, 190)}, {&S3DViewSettings::clrHighlight, "highlight", qRgb(255, 255, 0)},
    {&S3DViewSettings::clrText, "text", qRgb(255, 255, 255)},         {&S3DViewSettings::clrSelection, "selection", qRgb(62, 153, 246)},
    {&S3DViewSettings::clrSurface, "surface", qRgb(206, 203, 196)},
};
const SFlagField g_lstFlags[] = {
    {&S3DViewSettings::bShowAxes, "showAxes"},
    {&S3DViewSettings::bShowBoundingBox, "showBox"},
    {&S3DViewSettings::bShowGrid, "showGrid"},
};
const STextField g_lstTexts[] = {
    {&S3DViewSettings::strAxisX, "axisX", "x"},          {&S3DViewSettings::strAxisY, "axisY", "y"},
    {&S3DViewSettings::strAxisZ, "axisZ", "z"},          {&S3DViewSettings::strGridUnit, "gridUnit", "mm"},
    {&S3DViewSettings::strFontFamily, "fontFamily", ""},
};

/// The extension that a save filter may offer, from what was remembered: the end of it behind the last dot, in the spelling of filters.
QString filterExtension(const QString& strFormat)
{
    const QString strTail = strFormat.mid(strFormat.lastIndexOf(QLatin1Char('.')) + 1).toLower();
    if (strTail == QLatin1String("jpeg"))
        return QStringLiteral("jpg");
    if (strTail == QLatin1String("tiff"))
        return QStringLiteral("tif");
    return strTail;
}
} // namespace

COrmSettings* COrmPreference::getSettings()
{
    return &state().objSettings;
}

COrmSignalHandler* COrmPreference::getSignalHandler()
{
    return &state().objHub;
}

SDefaultColorBar COrmPreference::getDefaultColorBar()
{
    CSettingsStore& objStore = state().objStore;
    SDefaultColorBar objColorBar;
    objColorBar.nColorTable = objStore.value(g_strColorBar, QStringLiteral("table")).toInt(objColorBar.nColorTable);
    objColorBar.bReversed = objStore.value(g_strColorBar, QStringLiteral("reversed")).toBool(objColorBar.bReversed);
    return objColorBar;
}

void COrmPreference::setDefaultColorBar(const SDefaultColorBar& objColorBar)
{
    const SDefaultColorBar objBefore = getDefaultColorBar();
    if (objBefore.nColorTable == objColorBar.nColorTable && objBefore.bReversed == objColorBar.bReversed)
        return;
    CSettingsStore& objStore = state().objStore;
    objStore.hold();
    objStore.setValue(g_strColorBar, QStringLiteral("table"), objColorBar.nColorTable);
    objStore.setValue(g_strColorBar, QStringLiteral("reversed"), objColorBar.bReversed);
    objStore.release();
    emit getSignalHandler()->updatePreferenceSetting();
}

void COrmPreference::get3DViewPreferences(S3DViewSettings& objSettings)
{
    CSettingsStore& objStore = state().objStore;
    for (const SColorField& objField : g_lstColors)
    {
        const QColor clrStored(objStore.value(g_strView, QLatin1String(objField.pszKey)).toString());
        objSettings.*objField.pField = clrStored.isValid() ? clrStored : QColor(objField.nDefault);
    }
    for (const SFlagField& objField : g_lstFlags)
        objSettings.*objField.pField = objStore.value(g_strView, QLatin1String(objField.pszKey)).toBool(false);
    for (const STextField& objField : g_lstTexts)
        objSettings.*objField.pField =
            objStore.value(g_strView, QLatin1String(objField.pszKey)).toString(QLatin1String(objField.pszDefault));
    const int nFontSize = objStore.value(g_strView, QStringLiteral("fontSize")).toInt(0);
    objSettings.nFontSize = nFontSize >= g_nSmallestFont && nFontSize <= g_nLargestFont ? nFontSize : S3DViewSettings().nFontSize;
}

void COrmPreference::set3DViewPreferences(const S3DViewSettings& objSettings)
{
    CSettingsStore& objStore = state().objStore;
    S3DViewSettings objBefore;
    get3DViewPreferences(objBefore);
    bool bChanged = false;
    const auto store = [&](const char* pszKey, const QJsonValue& objValue)
    {
        bChanged = true;
        objStore.setValue(g_strView, QLatin1String(pszKey), objValue);
    };
    objStore.hold();
    for (const SColorField& objField : g_lstColors)
    {
        const QColor& clrNew = objSettings.*objField.pField;
        if (clrNew.isValid() && clrNew.rgb() != (objBefore.*objField.pField).rgb())
            store(objField.pszKey, clrNew.name());
    }
    for (const SFlagField& objField : g_lstFlags)
        if (objSettings.*objField.pField != objBefore.*objField.pField)
            store(objField.pszKey, objSettings.*objField.pField);
    for (const STextField& objField : g_lstTexts)
        if (objSettings.*objField.pField != objBefore.*objField.pField)
            store(objField.pszKey, objSettings.*objField.pField);
    if (objSettings.nFontSize != objBefore.nFontSize && objSettings.nFontSize >= g_nSmallestFont && objSettings.nFontSize <= g_nLargestFont)
        store("fontSize", objSettings.nFontSize);
    objStore.release();
    if (bChanged)
        emit getSignalHandler()->updatePreferenceSetting();
}

void COrmPreference::modifySaveFilterByPreference(QString& strFilter)
{
    const QString strExtension = filterExtension(getUsersPreferredFormat());
    if (strExtension.isEmpty())
        return;
    const QString strPattern = QStringLiteral("(*.%1)").arg(strExtension);
    QStringList lstEntries = strFilter.split(QStringLiteral(";;"));
    const auto it = std::find_if(lstEntries.begin(), lstEntries.end(),
                                 [&](const QString& strEntry) { return strEntry.endsWith(strPattern, Qt::CaseInsensitive); });
    if (it == lstEntries.end())
        return;
    lstEntries.move(int(it - lstEntries.begin()), 0);
    strFilter = lstEntries.join(QStringLiteral(";;"));
}

void COrmPreference::setUsersPreferredFormat(QString strFormat)
{
    state().objStore.setValue(g_strExport, QStringLiteral("format"),
                              strFormat.isEmpty() ? QJsonValue(QJsonValue::Undefined) : QJsonValue(strFormat));
}

QString COrmPreference::getUsersPreferredFormat()
{
    return state().objStore.value(g_strExport, QStringLiteral("format")).toString();
}

void COrmPreference::restoreDefaults()
{
    CSettingsStore& objStore = state().objStore;
    bool bChanged = false;
    const auto forget = [&](const QString& strSection, const QString& strKey)
    { bChanged = objStore.setValue(strSection, strKey, QJsonValue(QJsonValue::Undefined)) || bChanged; };
    objStore.hold();
    forget(g_strColorBar, QStringLiteral("table"));
    forget(g_strColorBar, QStringLiteral("reversed"));
    for (const SColorField& objField : g_lstColors)
        forget(g_strView, QLatin1String(objField.pszKey));
    for (const SFlagField& objField : g_lstFlags)
        forget(g_strView, QLatin1String(objField.pszKey));
    for (const STextField& objField : g_lstTexts)
        forget(g_strView, QLatin1String(objField.pszKey));
    forget(g_strView, QStringLiteral("fontSize"));
    forget(g_strExport, QStringLiteral("format"));
    bChanged = bChanged || !state().objSettings.getBrowsePath().isNull();
    state().objSettings.setBrowsePath(QString());
    objStore.release();
    if (bChanged)
        emit getSignalHandler()->updatePreferenceSetting();
}

void COrmPreference::hold()
{
    state().objStore.hold();
}

void COrmPreference::release()
{
    state().objStore.release();
}

void COrmPreference::setStore(const QString& strFile)
{
    state().objStore.setFile(strFile);
    state().objSettings.forgetRecentFilePath();
}

QString COrmPreference::getStore()
{
    return state().objStore.file();
}
