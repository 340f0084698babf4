#pragma once

#include "S3DViewSettings.h"

#include <QDialog>
#include <vector>

class COrmColorButton;
class COrmHostSettings;
class COrmPalettePixmapView;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QSpinBox;

/// The user's preferences. There is nothing to confirm: each change is kept at once and, but for that of the language, seen in the
/// open windows.
class COrmPreferencesDialog : public QDialog
{
    Q_OBJECT

public:
    /// The language is kept in @p objSettings, which outlives the dialog; everything else is kept in the preferences.
    explicit COrmPreferencesDialog(COrmHostSettings& objSettings, QWidget* pParent = nullptr);

protected:
    void showEvent(QShowEvent* pEvent) override;

private:
    QGroupBox* makeColorBarGroup();
    QGroupBox* makeViewGroup();
    QGroupBox* makeFilesGroup();
    QGroupBox* makeProgramGroup();
    void addColor(QFormLayout* pForm, const QString& strLabel, const QString& strHint, QColor S3DViewSettings::*pField,
                  const char* pszName);
    /// Shows what the preferences are.
    void fill();
    void applyColorBar();
    void applyFormat();
    void applyFolder();
    void applyLanguage();
    void chooseFolder();
    void updateNotice();

    /// A colour of the 3D views with the button that shows it.
    struct SColor
    {
        QColor S3DViewSettings::*pField;
        COrmColorButton* pButton;
    };

    COrmHostSettings& m_objSettings;
    QComboBox* m_pTable = nullptr;
    COrmPalettePixmapView* m_pStrip = nullptr;
    QCheckBox* m_pReversed = nullptr;
    std::vector<SColor> m_lstColors;
    QSpinBox* m_pFontSize = nullptr;
    QComboBox* m_pFormat = nullptr;
    QLineEdit* m_pFolder = nullptr;
    QComboBox* m_pLanguage = nullptr;
    QLabel* m_pNotice = nullptr; ///< what the user may not have meant
    bool m_bFilling = false;
};
