#pragma once

#include <QString>

/// Names of the click and sequence information, shared by everybody who reads it.
namespace PLConstants
{
/// Key of the sequence ID in a sequence file.
const QString SEQUENCEINFO_KEY = QStringLiteral("Sequence");
/// Section that only sequences with a CT surface have.
const QString CT_ACQUISITION_SECTION_KEY = QStringLiteral("CT Acquisition Parameters");
/// "Image Subtype" of a fluorescent image.
const QString FLUORESCENT_LUMINESCENT_TAG = QStringLiteral("fluorescent");

/// Key names of the click information by their number. Number 27 is the only one that is looked up; the others are null.
const QString strClickInfoKeys[58] = {QString(), QString(), QString(), QString(), QString(), QString(), QString(),
                                      QString(), QString(), QString(), QString(), QString(), QString(), QString(),
                                      QString(), QString(), QString(), QString(), QString(), QString(), QString(),
                                      QString(), QString(), QString(), QString(), QString(), QString(), QStringLiteral("Image Subtype")};
} // namespace PLConstants

/// Names of images and colour tables, and the look that windows share.
namespace OrmGlobalConstants
{
/// Section names of the images of a click.
const QString g_strImageSections[13] = {QStringLiteral("photographic image"),
                                        QStringLiteral("luminescent image"),
                                        QStringLiteral("readbias image"),
                                        QStringLiteral("readsigma image"),
                                        QStringLiteral("darkcharge image"),
                                        QStringLiteral("readbiasonly image"),
                                        QStringLiteral("reference image"),
                                        QStringLiteral("structure image"),
                                        QStringLiteral("fluorescent bkg image"),
                                        QStringLiteral("fluorescent reference image"),
                                        QStringLiteral("luminescent A image"),
                                        QStringLiteral("luminescent B image"),
                                        QStringLiteral("x-ray image")};

/// Number of colour tables for volumes.
constexpr int g_nVolumeColorTables = 13;

/// Names of the colour tables for volumes in the order in which they are offered. The array has room for one more.
const QString g_strVolumeColorTable[14] = {
    QStringLiteral("Grays"),     QStringLiteral("Red"),     QStringLiteral("Green"),  QStringLiteral("Blue"),       QStringLiteral("Cyan"),
    QStringLiteral("Yellow"),    QStringLiteral("Magenta"), QStringLiteral("Orange"), QStringLiteral("BlueYellow"), QStringLiteral("EosB"),
    QStringLiteral("GreenPink"), QStringLiteral("Rainbow"), QStringLiteral("Jet")};

/// Look of a tab bar's selected tab.
const QString g_strTabStyleSheet =
    QStringLiteral("QTabBar::tab:selected {\t\t\t\t\t\t\t\tbackground-color: rgb(62,153,246);\t\t\t\t\t\t\t\t}");
} // namespace OrmGlobalConstants
