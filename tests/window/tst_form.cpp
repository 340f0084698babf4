#include "FormTestTools.h"

#include "OrmTestMain.h"

using FormTest::memberNames;
using FormTest::namesInGeneratedClass;
using FormTest::objectNames;
using FormTest::SForm;

namespace
{
const QString s_strUntouched = QStringLiteral("(untouched)");
} // namespace

/// The static widget tree of the tool's window: names, texts and properties.
class tst_form : public QObject
{
    Q_OBJECT

private slots:
    void membersAreDeclaredInTheirOrder();
    void membersAreCreatedInTheirOrder();
    void namedObjectsAreFoundByName();
    void spacersBearNoName();
    void nameOfAFormIsKept();
    void formWithoutNameIsNamed();
    void formHasItsSize();
    void texts_data();
    void texts();
    void textsStandInOneContextWithTheirComments();
    void untouchedTextsAreEmpty();
    void tabsHaveTheirTitles();
    void properties_data();
    void properties();
    void iconsAreThere_data();
    void iconsAreThere();
    void slidersSpanTheirWholeRange();
    void firstTabIsShown();
    void radioButtonsChooseWithinTheirBox();
    void nothingElseIsSet();
};

void tst_form::membersAreDeclaredInTheirOrder()
{
    const QStringList lstMembers = namesInGeneratedClass(QStringLiteral("^    \\w+ \\*(\\w+);$"));
    QCOMPARE(memberNames().size(), 83);
    QCOMPARE(lstMembers, memberNames());
}

void tst_form::membersAreCreatedInTheirOrder()
{
    QCOMPARE(namesInGeneratedClass(QStringLiteral("^        (\\w+) = new ")), memberNames());
}

void tst_form::namedObjectsAreFoundByName()
{
    SForm objForm;
    const QStringList lstExpected = objectNames();
    QCOMPARE(lstExpected.size(), 77);
    for (const QString& strName : lstExpected)
    {
        QCOMPARE(objForm.objWidget.findChildren<QObject*>(strName).size(), 1);
    }
    // Nothing else is named but what widgets name inside themselves.
    QStringList lstFound;
    for (const QObject* pObject : objForm.objWidget.findChildren<QObject*>())
    {
        const bool bOfTabBar = qobject_cast<const QTabBar*>(pObject->parent()) != nullptr;
        if (!bOfTabBar && !pObject->objectName().isEmpty() && !pObject->objectName().startsWith(QLatin1String("qt_")))
        {
            lstFound.append(pObject->objectName());
        }
    }
    QStringList lstSorted = lstExpected;
    lstSorted.sort();
    lstFound.sort();
    QCOMPARE(lstFound.join(QLatin1Char(' ')), lstSorted.join(QLatin1Char(' ')));
}

void tst_form::spacersBearNoName()
{
    SForm objForm;
    int nSpacers = 0;
    for (QLayout* pLayout : objForm.objWidget.findChildren<QLayout*>())
    {
        for (int i = 0; objectNames().contains(pLayout->objectName()) && i < pLayout->count(); ++i)
        {
            nSpacers += pLayout->itemAt(i)->spacerItem() != nullptr ? 1 : 0;
        }
    }
    QCOMPARE(nSpacers, 6);
    QCOMPARE(objForm.objWidget.findChildren<QObject*>(QRegularExpression(QStringLiteral("[sS]pacer"))).size(), 0);
}

void tst_form::nameOfAFormIsKept()
{
    QWidget objWidget;
    objWidget.setObjectName(QStringLiteral("Mine"));
    Ui_LongitudinalStudyBrowserDlg objForm;
    objForm.setupUi(&objWidget);
    QCOMPARE(objWidget.objectName(), QStringLiteral("Mine"));
    for (const QString& strName : objectNames())
    {
        QVERIFY2(objWidget.findChild<QObject*>(strName) != nullptr, qPrintable(strName));
    }
}

void tst_form::formWithoutNameIsNamed()
{
    SForm objForm;
    QCOMPARE(objForm.objWidget.objectName(), QStringLiteral("LongitudinalStudyBrowserDlg"));
}

void tst_form::formHasItsSize()
{
    SForm objForm;
    QCOMPARE(objForm.objWidget.size(), QSize(1011, 719));
}

void tst_form::texts_data()
{
    QTest::addColumn<QString>("strProperty");
    QTest::addColumn<QString>("strText");
    QTest::addColumn<QString>("strToolTip");
    QTest::addColumn<QString>("strWhatsThis");
    const auto row =
        [](const char* pName, const char* pProperty, const QString& strText, const QString& strToolTip, const QString& strWhatsThis)
    { QTest::newRow(pName) << QString::fromLatin1(pProperty) << strText << strToolTip << strWhatsThis; };
    const QString strNone = s_strUntouched;
    const QString strAngle =
        QStringLiteral("<b>Angel of view:</b><br> Allows to change the angle of view of the 3d surface rendering.</br>");
    const QString strTable = QStringLiteral("<b>Color Table : </b>\nLists different kinds of color palettes. Sets the color map of source "
                                            "volume to the selected color palette.");
    const QString strMIP = QStringLiteral("<b>Maximum Intensity Projection :</b> Turns on the maximum intensity projection.");
    const QString strOpacity = QStringLiteral("<b>Opacity :</b> <br>Adjusts the opacity of the highlighted image in the list.</br>");
    row("LongitudinalStudyBrowserDlg", "windowTitle", QStringLiteral("Longitudinal Study Window"), strNone, strNone);
    row("m_pOpenButton", "", strNone, QStringLiteral("open"), QStringLiteral("Click this button to open SOLA/NOVA sequence."));
    row("label_4", "text", QStringLiteral("Angle Of View:"), strNone, strAngle);
    row("m_pThumWheel", "", strNone, strNone, strAngle);
    row("m_pCopyToClipboardButton", "text", QString(), QStringLiteral("Copy to clipboard (Ctrl+C)"),
        QStringLiteral("<b>Copy To Clipboard :</b> Copies the current view as an image."));
    row("m_pExportButton", "text", QString(), QStringLiteral("Export"),
        QStringLiteral("<b>Export Graphics :</b> Click this button to export the contents of the dataset window as an image."));
    row("label", "text", QStringLiteral("Select a Sequence:"), strNone, strNone);
    row("label_2", "text", QStringLiteral("Select Analysis Result:"), strNone, strNone);
    row("m_pLoadButton", "text", QStringLiteral("Load"), strNone,
        QStringLiteral("<b>Load:</b><br>Load the selected analysis result.</br>"));
    row("m_pSOLAGB", "title", QStringLiteral("Unit [SOLA]"), strNone, strNone);
    row("m_pPhotonsPerSecRB", "text", QStringLiteral("photons/sec"), strNone, strNone);
    row("m_pSOLACellsRB", "text", QStringLiteral("cells"), strNone, strNone);
    row("m_pNOVAGB", "title", QStringLiteral("Unit [NOVA]"), strNone, strNone);
    row("m_pPmolMcmRB", "text", QString::fromUtf8("pmol M-\xC2\xB9 cm-\xC2\xB9"), strNone, strNone);
    row("m_pPmolRB", "text", QStringLiteral("pmol"), strNone, strNone);
    row("m_pNOVACellsRB", "text", QStringLiteral("cells"), strNone, strNone);
    row("m_pDisplayVoxelsGB", "title", QStringLiteral("Display Voxels"), strNone,
        QStringLiteral("<b>Display voxels:</b><br>Show/Hide voxel rendering in the 3D view.</br>"));
    row("groupBox_2", "title", QStringLiteral("Color Scale"), strNone, strNone);
    row("label_5", "text", QStringLiteral("Min:"), strNone, strNone);
    row("m_pColorBarMinSpinbox", "", strNone, strNone,
        QStringLiteral("<b>Min Color Scale :</b> Sets the minimum value for the Source Intensity color bar."));
    row("label_6", "text", QStringLiteral("Max:"), strNone, strNone);
    row("m_pColorBarMaxSpinbox", "", strNone, strNone,
        QStringLiteral("<b>Max Color Scale :</b> Sets the maximum value for the Source Intensity color bar."));
    row("m_pResetColorBarMaxMinButton", "", strNone, strNone,
        QStringLiteral("<b>Reset:</b><br>Resets the min and max value to the default value.</br>"));
    row("m_pColorTableCB", "", strNone, strNone, strTable);
    row("m_pGLPalettePixmapFrame", "", strNone, strNone, strTable);
    row("m_pSourceColorTableSlider", "", strNone, strNone,
        QStringLiteral("<b>Voxels Color Sliders:</b><br>Move the sliders to adjust the color scale\nminimum and maximum values.</br>"));
    row("m_pReverseColorMapCheck", "text", QStringLiteral("Reverse"), strNone,
        QStringLiteral("<b>Reverse :</b> Reverses the color map of the source volume."));
    row("m_pLogarithmicScaleCheck", "text", QStringLiteral("Log Scale"), strNone,
        QStringLiteral("<b>Loagarithmic Scale :</b> Sets the color map of the source volume to logarithmic scale ."));
    row("m_pMIPCheck", "text", QStringLiteral("MIP"), strMIP, strMIP);
    row("m_pDisplaySurfaceGB", "title", QStringLiteral("Display Surface"), strNone,
        QStringLiteral("<b>Display Surface:</b><br>Show/Hide 3D surface rendering in the 3D view.</br>"));
    row("label_13", "text", QStringLiteral("Opacity:"), strNone,
        QStringLiteral("<b>Opacity :</b><br> Adjusts the opacity of the highlighted image in the list.</br>"));
    row("m_pOpacitySlider", "", strNone, strNone, strOpacity);
    row("m_pOpacitySpinBox", "", strNone, strNone, strOpacity);
    row("m_pDisplayPhotonDensityMap", "text", QStringLiteral("Display Photon Density Map"), strNone,
        QStringLiteral("<b>Display Photon Density Map:</b><br>Show/Hide Photon Density Map on the 3D Surface.</br>"));
    row("m_p3DBrowserTabWidget", "", strNone, strNone, QString());
    row("m_pSelectVoxelButton", "text", QString(), QStringLiteral("Measure Voxels"),
        QStringLiteral("<b>Measure Source: </b><br>Enables/Disables source measurement tool. The measured values are displayed in the "
                       "<b>Plots tab</b>.</br>"));
    row("m_pWaveLengthCB", "", strNone, strNone,
        QStringLiteral("<b>Wave Length:</b><br>Lists the wavelengths available for the selected analysis result.</br>"));
    row("label_3", "text", QStringLiteral("Wavelength:"), strNone, QString());
    row("m_pClear3DViewButton", "text", QStringLiteral("Remove"), strNone,
        QStringLiteral("<b>Remove: </b>\n<br>Remove Selected - Removes selected analysis result from the Longitudinal Study "
                       "window.</br>\n<br>Remove All - Removes all results from the Longitudinal Study window.</br>\n"));
    row("m_pPlotSelectionLabel", "text", QStringLiteral("Plot:"), strNone, QString());
    row("m_pAnalysisSelectionLabel", "text", QStringLiteral("Analysis Type:"), strNone, QString());
    row("m_pPlotSelectCB", "", strNone, strNone,
        QStringLiteral("<b>Plot:</b><br>Lists supported plots for loaded analysis results (Quantification Profile, Reduced Chi-Squared "
                       "Profile, Voxel Size).</br>"));
    row("m_pAnalysisSelectCB", "", strNone, strNone,
        QStringLiteral("<b>Analysis Type:</b><br>Lists supported analysis types (SOLA and NOVA).</br>"));
}

void tst_form::texts()
{
    QFETCH(QString, strProperty);
    QFETCH(QString, strText);
    QFETCH(QString, strToolTip);
    QFETCH(QString, strWhatsThis);
    SForm objForm;
    auto* pWidget = qobject_cast<QWidget*>(objForm.object(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(pWidget != nullptr);
    if (!strProperty.isEmpty())
    {
        QCOMPARE(pWidget->property(strProperty.toLatin1().constData()).toString(), strText);
    }
    QCOMPARE(pWidget->toolTip(), strToolTip == s_strUntouched ? QString() : strToolTip);
    QCOMPARE(pWidget->whatsThis(), strWhatsThis == s_strUntouched ? QString() : strWhatsThis);
}

void tst_form::textsStandInOneContextWithTheirComments()
{
    // A translator sees every text in the context of the form, two of them with a comment.
    struct STranslator : public QTranslator
    {
        QString translate(const char* pContext, const char* pText, const char* pComment, int nCount) const override
        {
            if (qstrcmp(pContext, "LongitudinalStudyBrowserDlg") != 0)
            {
                return QString();
            }
            ++nTexts;
            bCounted = bCounted || nCount != -1;
            if (pComment != nullptr)
            {
                lstComments.append(QString::fromUtf8(pText) + QLatin1Char('|') + QString::fromUtf8(pComment));
            }
            return QStringLiteral("~") + QString::fromUtf8(pText);
        }
        bool isEmpty() const override { return false; }

        mutable int nTexts = 0;
        mutable bool bCounted = false;
        mutable QStringList lstComments;
    };
    STranslator objTranslator;
    QCoreApplication::installTranslator(&objTranslator);
    {
        SForm objForm;
        QCOMPARE(objForm.objForm.m_pLoadButton->text(), QStringLiteral("~Load"));
        QCOMPARE(objForm.objForm.m_p3DBrowserTabWidget->tabText(1), QStringLiteral("~Plots"));
    }
    QCoreApplication::removeTranslator(&objTranslator);
    QVERIFY(!objTranslator.bCounted);
    // 26 texts and titles, 5 tool tips, 26 what's-this, 2 tabs; empty texts ask for no translation.
    QCOMPARE(objTranslator.nTexts, 26 + 5 + 26 + 2);
    const QString strComment = QStringLiteral("|User can adjust the threshold here to filter the voxels to be displayed in the 3D view");
    const QStringList lstExpected = {
        QStringLiteral("<b>Min Color Scale :</b> Sets the minimum value for the Source Intensity color bar.") + strComment,
        QStringLiteral("<b>Max Color Scale :</b> Sets the maximum value for the Source Intensity color bar.") + strComment};
    QCOMPARE(objTranslator.lstComments, lstExpected);
}

void tst_form::untouchedTextsAreEmpty()
{
    SForm objForm;
    for (const QWidget* pWidget : objForm.objWidget.findChildren<QWidget*>())
    {
        if (objectNames().contains(pWidget->objectName()) && pWidget->objectName() != QLatin1String("m_pMIPCheck"))
        {
            QVERIFY2(!pWidget->toolTip().contains(QLatin1Char('<')), qPrintable(pWidget->objectName()));
        }
    }
    for (const char* pName : {"m_pResultWidget", "m_pSequenceNameLW", "m_pPhotonsPerSecRB", "m_pSOLACellsRB", "m_pPmolMcmRB", "m_pPmolRB",
                              "m_pNOVACellsRB", "frame", "frame_2", "line5_2", "line5_3", "line5_4", "widget", "widget_2",
                              "m_pResultViewFrame", "m_pPlotViewFrame", "m_p3DViewTab", "m_p3DPlotTab"})
    {
        const auto* pWidget = TestWidgets::get<QWidget>(&objForm.objWidget, pName);
        QCOMPARE(pWidget->toolTip(), QString());
        QCOMPARE(pWidget->whatsThis(), QString());
    }
}

void tst_form::tabsHaveTheirTitles()
{
    SForm objForm;
    const QTabWidget* pTabs = objForm.objForm.m_p3DBrowserTabWidget;
    QCOMPARE(pTabs->count(), 2);
    QCOMPARE(pTabs->widget(0), objForm.objForm.m_p3DViewTab);
    QCOMPARE(pTabs->widget(1), objForm.objForm.m_p3DPlotTab);
    QCOMPARE(pTabs->tabText(0), QStringLiteral("3D View"));
    QCOMPARE(pTabs->tabText(1), QStringLiteral("Plots"));
}

void tst_form::properties_data()
{
    QTest::addColumn<QByteArray>("byProperty");
    QTest::addColumn<QVariant>("varValue");
    const auto row = [](const char* pName, const char* pProperty, const QVariant& varValue)
    { QTest::addRow("%s %s", pName, pProperty) << QByteArray(pProperty) << varValue; };
    const int nNoLimit = 16777215;
    for (const char* pName : {"frame_2", "frame"})
    {
        row(pName, "maximumSize", QSize(nNoLimit, 1));
        row(pName, "frameShape", static_cast<int>(QFrame::HLine));
        row(pName, "frameShadow", static_cast<int>(QFrame::Sunken));
        row(pName, "lineWidth", 1);
        row(pName, "midLineWidth", 0);
    }
    for (const char* pName : {"line5_2", "line5_3", "line5_4"})
    {
        row(pName, "frameShape", static_cast<int>(QFrame::VLine));
        row(pName, "frameShadow", static_cast<int>(QFrame::Sunken));
    }
    row("m_pOpenButton", "iconSize", QSize(20, 20));
    row("m_pOpenButton", "autoRaise", true);
    row("m_pThumWheel", "minimumSize", QSize(319, 26));
    for (const char* pName : {"m_pCopyToClipboardButton", "m_pExportButton", "m_pSelectVoxelButton"})
    {
        const bool bCopy = qstrcmp(pName, "m_pCopyToClipboardButton") == 0;
        row(pName, "minimumSize", QSize(0, 0));
        row(pName, "maximumSize", qstrcmp(pName, "m_pSelectVoxelButton") == 0 ? QSize(29, 30) : QSize(30, 30));
        row(pName, "focusPolicy", static_cast<int>(Qt::TabFocus));
        row(pName, "iconSize", bCopy ? QSize(20, 20) : QSize(19, 19));
        row(pName, "autoRaise", true);
    }
    row("m_pSequenceNameLW", "selectionMode", static_cast<int>(QAbstractItemView::SingleSelection));
    row("m_pResultWidget", "selectionMode", static_cast<int>(QAbstractItemView::ExtendedSelection));
    row("m_pPhotonsPerSecRB", "checked", true);
    row("m_pSOLACellsRB", "checked", false);
    row("m_pPmolMcmRB", "checked", true);
    row("m_pPmolRB", "checked", false);
    row("m_pNOVACellsRB", "checked", false);
    row("m_pDisplayVoxelsGB", "checkable", true);
    row("m_pDisplayVoxelsGB", "checked", true);
    for (const char* pName : {"m_pColorBarMinSpinbox", "m_pColorBarMaxSpinbox"})
    {
        row(pName, "minimumSize", QSize(60, 0));
        row(pName, "maximumSize", QSize(nNoLimit, nNoLimit));
    }
    row("m_pColorBarMinMaxSlider", "minimumSize", QSize(200, 0));
    row("m_pColorTableCB", "focusPolicy", static_cast<int>(Qt::TabFocus));
    row("m_pGLPalettePixmapFrame", "minimumSize", QSize(0, 20));
    row("m_pGLPalettePixmapFrame", "frameShape", static_cast<int>(QFrame::NoFrame));
    row("m_pGLPalettePixmapFrame", "frameShadow", static_cast<int>(QFrame::Plain));
    for (const char* pName : {"m_pColorBarMinMaxSlider", "m_pSourceColorTableSlider"})
    {
        row(pName, "minimum", 0);
        row(pName, "maximum", 100);
        row(pName, "orientation", static_cast<int>(Qt::Horizontal));
    }
    row("m_pReverseColorMapCheck", "maximumSize", QSize(100, nNoLimit));
    row("m_pReverseColorMapCheck", "checked", false);
    row("m_pLogarithmicScaleCheck", "checked", false);
    row("m_pMIPCheck", "checked", false);
    row("m_pDisplaySurfaceGB", "checkable", true);
    row("m_pDisplaySurfaceGB", "checked", true);
    row("m_pOpacitySlider", "minimumSize", QSize(135, 0));
    row("m_pOpacitySlider", "orientation", static_cast<int>(Qt::Horizontal));
    row("m_pDisplayPhotonDensityMap", "checked", true);
    row("widget", "minimumSize", QSize(0, 30));
    row("widget", "maximumSize", QSize(nNoLimit, 30));
    row("m_pClear3DViewButton", "minimumSize", QSize(0, 24));
    row("m_pClear3DViewButton", "maximumSize", QSize(110, nNoLimit));
    row("m_pClear3DViewButton", "iconSize", QSize(17, 17));
    row("m_pClear3DViewButton", "popupMode", static_cast<int>(QToolButton::InstantPopup));
    row("m_pClear3DViewButton", "toolButtonStyle", static_cast<int>(Qt::ToolButtonTextBesideIcon));
    row("m_pResultViewFrame", "frameShape", static_cast<int>(QFrame::StyledPanel));
    row("m_pResultViewFrame", "frameShadow", static_cast<int>(QFrame::Raised));
    row("widget_2", "minimumSize", QSize(565, 30));
    row("widget_2", "maximumSize", QSize(nNoLimit, 30));
    for (const char* pName : {"m_pPlotSelectCB", "m_pAnalysisSelectCB"})
    {
        row(pName, "minimumSize", QSize(100, 0));
        row(pName, "maximumSize", QSize(125, 30));
        row(pName, "count", 0);
    }
    row("m_pPlotViewFrame", "minimumSize", QSize(565, 440));
    row("m_pPlotViewFrame", "frameShape", static_cast<int>(QFrame::StyledPanel));
    row("m_pPlotViewFrame", "frameShadow", static_cast<int>(QFrame::Raised));
}

void tst_form::properties()
{
    QFETCH(QByteArray, byProperty);
    QFETCH(QVariant, varValue);
    SForm objForm;
    const QString strName = QString::fromLatin1(QTest::currentDataTag()).section(QLatin1Char(' '), 0, 0);
    QVariant varSeen = objForm.object(strName)->property(byProperty.constData());
    QVERIFY(varSeen.isValid());
    if (varValue.type() == QVariant::Int)
    {
        QCOMPARE(varSeen.toInt(), varValue.toInt());
    }
    else
    {
        QCOMPARE(varSeen, varValue);
    }
}

void tst_form::iconsAreThere_data()
{
    QTest::addColumn<QString>("strPicture");
    QTest::newRow("m_pOpenButton") << QStringLiteral(":/Resource/fileopen_enabled.xpm");
    QTest::newRow("m_pCopyToClipboardButton") << QStringLiteral(":/Resource/filecopy_enabled.xpm");
    QTest::newRow("m_pExportButton") << QStringLiteral(":/Resource/export_graphics.xpm");
    QTest::newRow("m_pResetColorBarMaxMinButton") << QStringLiteral(":/resource/undoArrow.xpm");
    QTest::newRow("m_pClear3DViewButton") << QStringLiteral(":/Resource/tbRoiDelete.xpm");
    QTest::newRow("m_pSelectVoxelButton") << QStringLiteral(":/Resource/VoxelMeasurement.xpm");
}

void tst_form::iconsAreThere()
{
    QFETCH(QString, strPicture);
    SForm objForm;
    auto* pButton = qobject_cast<QToolButton*>(objForm.object(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(pButton != nullptr);
    const QPixmap objPicture(strPicture);
    QVERIFY(!objPicture.isNull());
    const QImage imgSeen = pButton->icon().pixmap(objPicture.size()).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(imgSeen, objPicture.toImage().convertToFormat(QImage::Format_ARGB32));
    if (pButton->objectName() == QLatin1String("m_pResetColorBarMaxMinButton"))
    {
        QCOMPARE(pButton->iconSize(), QToolButton().iconSize());
    }
}

void tst_form::slidersSpanTheirWholeRange()
{
    SForm objForm;
    for (const QSpanSlider* pSlider : {objForm.objForm.m_pColorBarMinMaxSlider, objForm.objForm.m_pSourceColorTableSlider})
    {
        QCOMPARE(pSlider->minimum(), 0);
        QCOMPARE(pSlider->maximum(), 100);
        QCOMPARE(pSlider->lowerValue(), 0);
        QCOMPARE(pSlider->upperValue(), 100);
    }
}

void tst_form::firstTabIsShown()
{
    SForm objForm;
    QCOMPARE(objForm.objForm.m_p3DBrowserTabWidget->currentIndex(), 0);
    QCOMPARE(objForm.objForm.m_p3DBrowserTabWidget->currentWidget(), objForm.objForm.m_p3DViewTab);
}

void tst_form::radioButtonsChooseWithinTheirBox()
{
    SForm objForm;
    objForm.objForm.m_pSOLACellsRB->click();
    QVERIFY(!objForm.objForm.m_pPhotonsPerSecRB->isChecked());
    QVERIFY(objForm.objForm.m_pPmolMcmRB->isChecked());
    objForm.objForm.m_pNOVACellsRB->click();
    QVERIFY(!objForm.objForm.m_pPmolMcmRB->isChecked());
    QVERIFY(objForm.objForm.m_pSOLACellsRB->isChecked());
}

void tst_form::nothingElseIsSet()
{
    SForm objForm;
    for (const QWidget* pWidget : objForm.objWidget.findChildren<QWidget*>())
    {
        QVERIFY2(pWidget->styleSheet().isEmpty(), qPrintable(pWidget->objectName()));
        QVERIFY2(!pWidget->testAttribute(Qt::WA_ForceDisabled), qPrintable(pWidget->objectName()));
    }
    for (const char* pName : {"m_pOpenButton", "m_pLoadButton", "m_pWaveLengthCB", "m_pDisplayVoxelsGB"})
    {
        QVERIFY2(TestWidgets::get<QWidget>(&objForm.objWidget, pName)->isEnabledTo(&objForm.objWidget), pName);
    }
    const QSpinBox objSpin;
    QCOMPARE(objForm.objForm.m_pOpacitySpinBox->minimum(), objSpin.minimum());
    QCOMPARE(objForm.objForm.m_pOpacitySpinBox->maximum(), objSpin.maximum());
    QCOMPARE(objForm.objForm.m_pColorTableCB->count(), 0);
    QCOMPARE(objForm.objForm.m_pWaveLengthCB->count(), 0);
    QVERIFY(objForm.objForm.horizontalLayout_7->isEmpty());
    QVERIFY(objForm.objForm.gridLayout_5->itemAtPosition(0, 4) == nullptr);
}

ORM_TEST_MAIN(tst_form)
#include "tst_form.moc"
