#include "OrmLanguage.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

#include <memory>
#include <utility>

// Stands outside every namespace, as the macro demands.
static void initTranslations()
{
    Q_INIT_RESOURCE(translations);
}

namespace
{
const QString s_strEnglish = QStringLiteral("en");
const QString s_strFolder = QStringLiteral(":/translations");
const QString s_strStart = QStringLiteral("ormelle_");

QString& currentCode()
{
    static QString s_strCode = s_strEnglish;
    return s_strCode;
}

/// The translators in use, which go with the application.
QList<QPointer<QTranslator>>& translators()
{
    static QList<QPointer<QTranslator>> s_lstTranslators;
    return s_lstTranslators;
}

/// Puts a file before those that are asked already; one that is not there changes nothing.
void install(const QString& strName, const QString& strFolder)
{
    auto pTranslator = std::make_unique<QTranslator>(QCoreApplication::instance());
    if (!pTranslator->load(strName, strFolder))
        return;
    QCoreApplication::installTranslator(pTranslator.get());
    translators().append(pTranslator.release());
}
} // namespace

QStringList OrmLanguage::codes()
{
    initTranslations();
    QStringList lstCodes{s_strEnglish};
    const QStringList lstFiles = QDir(s_strFolder).entryList({s_strStart + QStringLiteral("*.qm")}, QDir::Files, QDir::Name);
    for (const QString& strFile : lstFiles)
        lstCodes.append(strFile.mid(s_strStart.size()).chopped(3));
    return lstCodes;
}

QString OrmLanguage::nameOf(const QString& strCode)
{
    return strCode == s_strEnglish ? QStringLiteral("English") : QLocale(strCode).nativeLanguageName();
}

QString OrmLanguage::choose(const QString& strWanted, const QStringList& lstSystem)
{
    const QStringList lstCodes = codes();
    if (lstCodes.contains(strWanted))
        return strWanted;
    for (const QString& strName : lstSystem)
    {
        if (const QString strCode = strName.left(strName.indexOf(QLatin1Char('-'))).toLower(); lstCodes.contains(strCode))
            return strCode;
    }
    return s_strEnglish;
}

void OrmLanguage::use(const QString& strCode)
{
    qDeleteAll(std::exchange(translators(), {})); // a translator that goes is asked no more
    currentCode() = codes().contains(strCode) ? strCode : s_strEnglish;
    if (current() == s_strEnglish)
        return;
    install(QStringLiteral("qtbase_") + current(), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(s_strStart + current(), s_strFolder);
}

QString OrmLanguage::current()
{
    return currentCode();
}
