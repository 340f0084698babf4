#include "COrmPreferencesDialog.h"

#include "COrmColorButton.h"
#include "COrmHostSettings.h"
#include "COrmPalettePixmapView.h"
#include "COrmPreference.h"
#include "OrmColorTables.h"
#include "OrmLanguage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace
{
constexpr double s_fLeastContrast = 3.0; ///< of text that can be read, by WCAG 2.1, success criterion 1.4.11

/// Relative luminance of an sRGB colour, by WCAG 2.1.
double luminance(const QColor& clr)
{
    const auto linear = [](double f) { return f <= 0.04045 ? f / 12.92 : std::pow((f + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(clr.redF()) + 0.7152 * linear(clr.greenF()) + 0.0722 * linear(clr.blueF());
}

double contrast(const QColor& clrOne, const QColor& clrOther)
{
    const double fOne = luminance(clrOne) + 0.05;
    const double fOther = luminance(clrOther) + 0.05;
    return std::max(fOne, fOther) / std::min(fOne, fOther);
}
} // namespace

COrmPreferencesDialog::COrmPreferencesDialog(COrmHostSettings& objSettings, QWidget* pParent) : QDialog(pParent), m_objSettings(objSettings)
{
    setObjectName(QStringLiteral("preferencesDialog"));
    setWindowTitle(tr("Preferences"));
    m_pNotice = new QLabel(this);
    m_pNotice->setObjectName(QStringLiteral("preferencesNotice"));
    m_pNotice->setWordWrap(true);
    auto* pHint = new QLabel(tr("Every change counts at once."), this);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(makeColorBarGroup());
    pLayout->addWidget(makeViewGroup());
    pLayout->addWidget(makeFilesGroup());
    pLayout->addWidget(makeProgramGroup());
    pLayout->addWidget(m_pNotice);
    pLayout->addStretch();
    pLayout->addWidget(pHint);

    // Made last, so that the way by Tab ends at them.
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::RestoreDefaults | QDialogButtonBox::Close, this);
    pButtons->button(QDialogButtonBox::RestoreDefaults)->setObjectName(QStringLiteral("restoreDefaults"));
    pButtons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("closePreferences"));
    pLayout->addWidget(pButtons);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::close);
    connect(pButtons->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            [this]
            {
                COrmPreference::restoreDefaults();
                m_objSettings.setLanguage(QString());
                fill();
            });
    // Return in a field must press nothing.
    const QList<QPushButton*> lstButtons = findChildren<QPushButton*>();
    for (QPushButton* pButton : lstButtons)
        pButton->setAutoDefault(false);
    connect(COrmPreference::getSignalHandler(), &COrmSignalHandler::updatePreferenceSetting, this, &COrmPreferencesDialog::fill);
    fill();
}

QGroupBox* COrmPreferencesDialog::makeColorBarGroup()
{
    auto* pGroup = new QGroupBox(tr("Colour bar that a tool starts with"), this);
    auto* pForm = new QFormLayout(pGroup);
    m_pTable = new QComboBox(pGroup);
    m_pTable->setObjectName(QStringLiteral("preferredTable"));
    m_pTable->addItems(OrmColorTables::volumeTableNames());
    m_pTable->setToolTip(tr("Colours of source volumes when the window of a tool is opened or emptied"));
    m_pStrip = new COrmPalettePixmapView(pGroup);
    m_pStrip->setMinimumHeight(fontMetrics().height());
    m_pStrip->setAccessibleName(tr("Colours of the table"));
    m_pReversed = new QCheckBox(tr("&Reversed"), pGroup);
    m_pReversed->setObjectName(QStringLiteral("preferredReversed"));
    m_pReversed->setToolTip(tr("From the colour of the highest value to that of the lowest"));
    pForm->addRow(tr("Colour &table:"), m_pTable);
    pForm->addRow(QString(), m_pStrip);
    pForm->addRow(QString(), m_pReversed);
    connect(m_pTable, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &COrmPreferencesDialog::applyColorBar);
    connect(m_pReversed, &QCheckBox::toggled, this, &COrmPreferencesDialog::applyColorBar);
    return pGroup;
}

QGroupBox* COrmPreferencesDialog::makeViewGroup()
{
    auto* pGroup = new QGroupBox(tr("3D views"), this);
    auto* pForm = new QFormLayout(pGroup);
    addColor(pForm, tr("&Background:"), tr("Colour behind the results"), &S3DViewSettings::clrBackground, "colorBackground");
    addColor(pForm, tr("Te&xt:"), tr("Colour of the text at the colour bars"), &S3DViewSettings::clrText, "colorText");
    addColor(pForm, tr("&Surface:"), tr("Colour of surfaces that show no photon density"), &S3DViewSettings::clrSurface, "colorSurface");
    m_pFontSize = new QSpinBox(pGroup);
    m_pFontSize->setObjectName(QStringLiteral("preferredFontSize"));
    m_pFontSize->setRange(6, 24); // more has no room beside the colour bar
    m_pFontSize->setSuffix(tr(" points"));
    m_pFontSize->setToolTip(tr("Size of the text at the colour bars"));
    pForm->addRow(tr("&Font size:"), m_pFontSize);
    connect(m_pFontSize, QOverload<int>::of(&QSpinBox::valueChanged), this,
            [this](int nSize)
            {
                if (m_bFilling)
                    return;
                S3DViewSettings objSettings;
                COrmPreference::get3DViewPreferences(objSettings);
                objSettings.nFontSize = nSize;
                COrmPreference::set3DViewPreferences(objSettings);
            });
    return pGroup;
}

void COrmPreferencesDialog::addColor(QFormLayout* pForm, const QString& strLabel, const QString& strHint, QColor S3DViewSettings::*pField,
                                     const char* pszName)
{
    auto* pButton = new COrmColorButton(strHint, this);
    pButton->setObjectName(QLatin1String(pszName));
    pButton->setToolTip(strHint);
    pForm->addRow(strLabel, pButton);
    m_lstColors.push_back({pField, pButton});
    connect(pButton, &COrmColorButton::colorTried, this,
            [pField](const QColor& clr)
            {
                S3DViewSettings objSettings;
                COrmPreference::get3DViewPreferences(objSettings);
                objSettings.*pField = clr;
                COrmPreference::set3DViewPreferences(objSettings);
            });
    // While colours are tried none is written: there may be many in a second.
    connect(pButton, &COrmColorButton::choosing, this,
            [](bool bChoosing) { bChoosing ? COrmPreference::hold() : COrmPreference::release(); });
}

QGroupBox* COrmPreferencesDialog::makeFilesGroup()
{
    auto* pGroup = new QGroupBox(tr("Files"), this);
    auto* pForm = new QFormLayout(pGroup);
    m_pFormat = new QComboBox(pGroup);
    m_pFormat->setObjectName(QStringLiteral("preferredFormat"));
    m_pFormat->setToolTip(tr("The format that is offered first when a picture is saved; the one that was used last takes its place"));
    m_pFormat->addItem(tr("No preference"), QString());
    m_pFormat->addItem(tr("PNG (.png)"), QStringLiteral("png"));
    m_pFormat->addItem(tr("TIFF (.tif)"), QStringLiteral("tif"));
    m_pFormat->addItem(tr("JPEG (.jpg)"), QStringLiteral("jpg"));
    m_pFormat->addItem(tr("Bitmap (.bmp)"), QStringLiteral("bmp"));
    m_pFormat->addItem(tr("Encapsulated PostScript (.eps)"), QStringLiteral("eps"));
    pForm->addRow(tr("&Image format:"), m_pFormat);
    m_pFolder = new QLineEdit(pGroup);
    m_pFolder->setObjectName(QStringLiteral("browseFolder"));
    m_pFolder->setClearButtonEnabled(true);
    m_pFolder->setPlaceholderText(tr("The current folder"));
    m_pFolder->setToolTip(tr("The folder in which the search for studies begins"));
    m_pFolder->setMinimumWidth(24 * fontMetrics().averageCharWidth());
    auto* pBrowse = new QToolButton(pGroup);
    pBrowse->setObjectName(QStringLiteral("chooseFolder"));
    pBrowse->setText(QStringLiteral("..."));
    pBrowse->setToolTip(tr("Choose a folder"));
    pBrowse->setAccessibleName(tr("Choose a folder"));
    auto* pRow = new QHBoxLayout;
    pRow->addWidget(m_pFolder);
    pRow->addWidget(pBrowse);
    pForm->addRow(tr("Browse f&older:"), pRow);
    qobject_cast<QLabel*>(pForm->labelForField(pRow))->setBuddy(m_pFolder);
    connect(m_pFormat, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &COrmPreferencesDialog::applyFormat);
    connect(m_pFolder, &QLineEdit::textChanged, this, &COrmPreferencesDialog::applyFolder);
    connect(pBrowse, &QToolButton::clicked, this, &COrmPreferencesDialog::chooseFolder);
    return pGroup;
}

QGroupBox* COrmPreferencesDialog::makeProgramGroup()
{
    auto* pGroup = new QGroupBox(tr("Program"), this);
    auto* pForm = new QFormLayout(pGroup);
    m_pLanguage = new QComboBox(pGroup);
    m_pLanguage->setObjectName(QStringLiteral("language"));
    m_pLanguage->setToolTip(tr("The language of menus and messages from the next start on; tools have languages of their own"));
    m_pLanguage->addItem(tr("The system's"), QString());
    const QStringList lstCodes = OrmLanguage::codes();
    for (const QString& strCode : lstCodes)
        m_pLanguage->addItem(OrmLanguage::nameOf(strCode), strCode);
    pForm->addRow(tr("&Language:"), m_pLanguage);
    connect(m_pLanguage, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &COrmPreferencesDialog::applyLanguage);
    return pGroup;
}

void COrmPreferencesDialog::showEvent(QShowEvent* pEvent)
{
    fill(); // a program remembers folder and format also where nobody tells
    QDialog::showEvent(pEvent);
}

void COrmPreferencesDialog::fill()
{
    m_bFilling = true;
    const SDefaultColorBar objColorBar = COrmPreference::getDefaultColorBar();
    m_pTable->setCurrentIndex(objColorBar.nColorTable >= 0 && objColorBar.nColorTable < m_pTable->count() ? objColorBar.nColorTable : -1);
    m_pReversed->setChecked(objColorBar.bReversed);
    m_pStrip->setPaletteCT(OrmColorTables::typeForPosition(objColorBar.nColorTable), 0.0F, 1.0F);
    m_pStrip->setPaletteCTReverse(objColorBar.bReversed);
    S3DViewSettings objSettings;
    COrmPreference::get3DViewPreferences(objSettings);
    for (const SColor& sColor : m_lstColors)
        sColor.pButton->setColor(objSettings.*sColor.pField);
    m_pFontSize->setValue(objSettings.nFontSize);
    m_pFormat->setCurrentIndex(std::max(0, m_pFormat->findData(COrmPreference::getUsersPreferredFormat())));
    m_pLanguage->setCurrentIndex(std::max(0, m_pLanguage->findData(m_objSettings.language())));
    // While a path is typed it stays as it is typed.
    const QString strFolder = COrmPreference::getSettings()->getBrowsePath();
    if (!m_pFolder->hasFocus() || strFolder.isEmpty())
        m_pFolder->setText(strFolder);
    m_bFilling = false;
    updateNotice();
}

void COrmPreferencesDialog::applyColorBar()
{
    if (!m_bFilling && m_pTable->currentIndex() >= 0)
        COrmPreference::setDefaultColorBar({m_pTable->currentIndex(), m_pReversed->isChecked()});
}

void COrmPreferencesDialog::applyFormat()
{
    if (m_bFilling)
        return;
    COrmPreference::setUsersPreferredFormat(m_pFormat->currentData().toString());
    emit COrmPreference::getSignalHandler()->updatePreferenceSetting();
}

void COrmPreferencesDialog::applyFolder()
{
    if (m_bFilling)
        return;
    const QString strFolder = m_pFolder->text();
    if (strFolder.isEmpty() || QFileInfo(strFolder).isDir())
    {
        const QString strBefore = COrmPreference::getSettings()->getBrowsePath();
        COrmPreference::getSettings()->setBrowsePath(strFolder);
        if (strBefore != strFolder)
            emit COrmPreference::getSignalHandler()->updatePreferenceSetting();
    }
    updateNotice();
}

void COrmPreferencesDialog::applyLanguage()
{
    if (m_bFilling)
        return;
    m_objSettings.setLanguage(m_pLanguage->currentData().toString());
    updateNotice();
}

void COrmPreferencesDialog::chooseFolder()
{
    auto* pDialog = new QFileDialog(this, tr("Browse Folder"), COrmPreference::getSettings()->getBrowsePath());
    pDialog->setObjectName(QStringLiteral("browseFolderDialog"));
    pDialog->setAttribute(Qt::WA_DeleteOnClose);
    pDialog->setFileMode(QFileDialog::Directory);
    pDialog->setOption(QFileDialog::ShowDirsOnly);
    connect(pDialog, &QFileDialog::fileSelected, m_pFolder, &QLineEdit::setText);
    pDialog->open();
}

void COrmPreferencesDialog::updateNotice()
{
    S3DViewSettings objSettings;
    COrmPreference::get3DViewPreferences(objSettings);
    QStringList lstNotices;
    if (contrast(objSettings.clrText, objSettings.clrBackground) < s_fLeastContrast)
        lstNotices << tr("Text is hard to read on this background.");
    if (!m_pFolder->text().isEmpty() && !QFileInfo(m_pFolder->text()).isDir())
        lstNotices << tr("There is no such folder; the search begins where it did before.");
    if (OrmLanguage::choose(m_pLanguage->currentData().toString(), QLocale::system().uiLanguages()) != OrmLanguage::current())
        lstNotices << tr("The language changes when Ormelle is started again.");
    m_pNotice->setText(lstNotices.join(QLatin1Char(' ')));
    m_pNotice->setVisible(!lstNotices.isEmpty());
    // Room for the notice is not taken from the fields.
    if (layout() != nullptr && height() < layout()->totalHeightForWidth(width()))
        resize(width(), layout()->totalHeightForWidth(width()));
}
