#pragma once

#include <QString>
#include <QStringList>

/// The language of the host's windows. English is the one that the sources are written in; the others are compiled in from the files of the
/// folder translations. Numbers, dates and everything that is written to files are the same in every language.
namespace OrmLanguage
{
/// The codes by ISO 639-1 of the languages there are, English first.
QStringList codes();
/// What the language calls itself.
QString nameOf(const QString& strCode);
/// @return the wanted language, if there is one and it is known, otherwise the first of the system's languages that is known, otherwise
/// English. @p lstSystem holds names as QLocale::uiLanguages() gives them, such as "de-AT".
QString choose(const QString& strWanted, const QStringList& lstSystem);
/// Texts that are made from now on are in that language, Qt's own where its translations are installed. What is shown already stays.
void use(const QString& strCode);
/// The language in use.
QString current();
} // namespace OrmLanguage
