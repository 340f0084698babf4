#pragma once

// What the tests of the form share: the names of its members, and a widget with the form on it.

#include "ui_LongitudinalStudyBrowserDlg.h"

#include "TestWidgets.h"

#include <QFile>
#include <QRegularExpression>

namespace FormTest
{
/// All members of the form's class in the order of their declaration and creation; a spacer has no name.
inline QStringList memberNames()
{
    return QStringLiteral(
               "gridLayout_7 frame_2 horizontalLayout_3 m_pOpenButton spacer horizontalLayout_5 horizontalLayout_7 spacer label_4 "
               "m_pThumWheel spacer line5_2 m_pCopyToClipboardButton m_pExportButton frame verticalLayout_5 verticalLayout label "
               "m_pSequenceNameLW label_2 m_pResultWidget horizontalLayout_2 spacer m_pLoadButton verticalLayout_3 m_pSOLAGB gridLayout_3 "
               "m_pPhotonsPerSecRB m_pSOLACellsRB m_pNOVAGB gridLayout_2 m_pPmolMcmRB m_pPmolRB m_pNOVACellsRB m_pDisplayVoxelsGB "
               "gridLayout_8 groupBox_2 gridLayout verticalLayout_4 horizontalLayout_4 label_5 m_pColorBarMinSpinbox label_6 "
               "m_pColorBarMaxSpinbox m_pResetColorBarMaxMinButton m_pColorBarMinMaxSlider m_pColorTableCB verticalLayout_2 "
               "m_pGLPalettePixmapFrame m_pSourceColorTableSlider m_pReverseColorMapCheck m_pLogarithmicScaleCheck m_pMIPCheck "
               "m_pDisplaySurfaceGB gridLayout_9 horizontalLayout label_13 m_pOpacitySlider m_pOpacitySpinBox m_pDisplayPhotonDensityMap "
               "m_p3DBrowserTabWidget m_p3DViewTab gridLayout_10 widget gridLayout_4 m_pSelectVoxelButton line5_3 m_pWaveLengthCB label_3 "
               "m_pClear3DViewButton spacer m_pResultViewFrame m_p3DPlotTab gridLayout_6 widget_2 gridLayout_5 spacer line5_4 "
               "m_pPlotSelectionLabel m_pAnalysisSelectionLabel m_pPlotSelectCB m_pAnalysisSelectCB m_pPlotViewFrame")
        .split(QLatin1Char(' '));
}

inline QStringList objectNames()
{
    QStringList lstNames = memberNames();
    lstNames.removeAll(QStringLiteral("spacer"));
    return lstNames;
}

/// What the class that was made of the form names in lines of that pattern, spacers without their names.
inline QStringList namesInGeneratedClass(const QString& strPattern)
{
    QFile objFile(QStringLiteral(ORM_BINARY_DIR "/Source/Plug-ins/OrmLongitudinalStudyBrowser/ui_LongitudinalStudyBrowserDlg.h"));
    if (!objFile.open(QIODevice::ReadOnly))
    {
        TestWidgets::fail(QStringLiteral("Cannot read %1").arg(objFile.fileName()));
    }
    const QString strText = QString::fromUtf8(objFile.readAll());
    const QRegularExpression objPattern(strPattern, QRegularExpression::MultilineOption);
    QStringList lstNames;
    for (QRegularExpressionMatchIterator it = objPattern.globalMatch(strText); it.hasNext();)
    {
        const QString strName = it.next().captured(1);
        lstNames.append(strName.contains(QLatin1String("Spacer")) ? QStringLiteral("spacer") : strName);
    }
    return lstNames;
}

/// A widget with the form on it.
struct SForm
{
    SForm() { objForm.setupUi(&objWidget); }
    QObject* object(const QString& strName)
    {
        QObject* pObject = objWidget.objectName() == strName ? &objWidget : objWidget.findChild<QObject*>(strName);
        if (pObject == nullptr)
        {
            TestWidgets::fail(QStringLiteral("Nothing is named %1").arg(strName));
        }
        return pObject;
    }

    QWidget objWidget;
    Ui_LongitudinalStudyBrowserDlg objForm;
};
} // namespace FormTest
