#include "FormTestTools.h"

#include "OrmTestMain.h"

using FormTest::namesInGeneratedClass;
using FormTest::SForm;

namespace
{
/// Finds the layout that holds the child, and the child's place in it.
QLayout* layoutOf(const QObject* pRoot, const QObject* pChild, int& nPlace)
{
    for (QLayout* pLayout : pRoot->findChildren<QLayout*>())
    {
        for (int i = 0; i < pLayout->count(); ++i)
        {
            QLayoutItem* pItem = pLayout->itemAt(i);
            if ((pItem->widget() != nullptr && pItem->widget() == pChild) || (pItem->layout() != nullptr && pItem->layout() == pChild))
            {
                nPlace = i;
                return pLayout;
            }
        }
    }
    return nullptr;
}

QString policyText(const QSizePolicy& objPolicy)
{
    const QMetaEnum objEnum = QMetaEnum::fromType<QSizePolicy::Policy>();
    return QStringLiteral("%1/%2 %3/%4")
        .arg(QLatin1String(objEnum.valueToKey(objPolicy.horizontalPolicy())), QLatin1String(objEnum.valueToKey(objPolicy.verticalPolicy())))
        .arg(objPolicy.horizontalStretch())
        .arg(objPolicy.verticalStretch());
}
} // namespace

/// The layouts of the static widget tree: what stands where, and how it grows.
class tst_formlayout : public QObject
{
    Q_OBJECT

private slots:
    void layouts_data();
    void layouts();
    void places_data();
    void places();
    void spacers_data();
    void spacers();
    void policies_data();
    void policies();
    void heightForWidthIsLeftToTheWidget();
};

void tst_formlayout::layouts_data()
{
    // -1: as the style, or the layout around it, has it.
    QTest::addColumn<QByteArray>("byClass");
    QTest::addColumn<QString>("strParent");
    QTest::addColumn<int>("nSpacing");
    QTest::addColumn<int>("nMargin");
    const auto row = [](const char* pName, const char* pClass, const char* pParent, int nSpacing, int nMargin)
    { QTest::newRow(pName) << QByteArray(pClass) << QString::fromLatin1(pParent) << nSpacing << nMargin; };
    row("gridLayout_7", "QGridLayout", "LongitudinalStudyBrowserDlg", 2, 2);
    row("horizontalLayout_3", "QHBoxLayout", "gridLayout_7", 2, 0);
    row("horizontalLayout_5", "QHBoxLayout", "horizontalLayout_3", -1, 0);
    row("horizontalLayout_7", "QHBoxLayout", "horizontalLayout_5", -1, 0);
    row("verticalLayout_5", "QVBoxLayout", "gridLayout_7", 9, 0);
    row("verticalLayout", "QVBoxLayout", "verticalLayout_5", 2, 0);
    row("horizontalLayout_2", "QHBoxLayout", "verticalLayout", 0, 0);
    row("verticalLayout_3", "QVBoxLayout", "verticalLayout_5", -1, 0);
    row("gridLayout_3", "QGridLayout", "m_pSOLAGB", 1, 1);
    row("gridLayout_2", "QGridLayout", "m_pNOVAGB", 1, 1);
    row("gridLayout_8", "QGridLayout", "m_pDisplayVoxelsGB", 2, 2);
    row("gridLayout", "QGridLayout", "groupBox_2", 2, 2);
    row("verticalLayout_4", "QVBoxLayout", "gridLayout", 2, 0);
    row("horizontalLayout_4", "QHBoxLayout", "verticalLayout_4", 2, 0);
    row("verticalLayout_2", "QVBoxLayout", "gridLayout", -1, 0);
    row("gridLayout_9", "QGridLayout", "m_pDisplaySurfaceGB", 1, 1);
    row("horizontalLayout", "QHBoxLayout", "gridLayout_9", -1, 0);
    row("gridLayout_10", "QGridLayout", "m_p3DViewTab", 1, 1);
    row("gridLayout_4", "QGridLayout", "widget", 3, 3);
    row("gridLayout_6", "QGridLayout", "m_p3DPlotTab", -1, -1);
    row("gridLayout_5", "QGridLayout", "widget_2", 3, 3);
}

void tst_formlayout::layouts()
{
    QFETCH(QByteArray, byClass);
    QFETCH(QString, strParent);
    QFETCH(int, nSpacing);
    QFETCH(int, nMargin);
    SForm objForm;
    auto* pLayout = qobject_cast<QLayout*>(objForm.object(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(pLayout != nullptr);
    QCOMPARE(QByteArray(pLayout->metaObject()->className()), byClass);
    QCOMPARE(pLayout->parent()->objectName(), strParent);

    // A layout of the same class and kind that nobody touched shows what the style has.
    QWidget objWindow;
    QWidget objReference(&objWindow);
    const auto* pReference = new QGridLayout(&objReference);
    if (byClass == "QGridLayout")
    {
        auto* pGrid = static_cast<QGridLayout*>(pLayout);
        const int nExpected = nSpacing < 0 ? pReference->horizontalSpacing() : nSpacing;
        QCOMPARE(pGrid->horizontalSpacing(), nExpected);
        QCOMPARE(pGrid->verticalSpacing(), nSpacing < 0 ? pReference->verticalSpacing() : nSpacing);
    }
    else
    {
        QCOMPARE(pLayout->spacing(), nSpacing < 0 ? qobject_cast<QLayout*>(pLayout->parent())->spacing() : nSpacing);
    }
    const QMargins objMargins = nMargin < 0 ? pReference->contentsMargins() : QMargins(nMargin, nMargin, nMargin, nMargin);
    QCOMPARE(pLayout->contentsMargins(), objMargins);
}

void tst_formlayout::places_data()
{
    QTest::addColumn<QString>("strLayout");
    QTest::addColumn<QVector<int>>("vecPlace");
    const auto row = [](const char* pName, const char* pLayout, const QVector<int>& vecPlace)
    { QTest::newRow(pName) << QString::fromLatin1(pLayout) << vecPlace; };
    // Grids: row, column, row span, column span. Boxes: number from 0, spacers counted.
    row("frame_2", "gridLayout_7", {0, 0, 1, 2});
    row("horizontalLayout_3", "gridLayout_7", {1, 0, 1, 2});
    row("m_pOpenButton", "horizontalLayout_3", {0});
    row("horizontalLayout_5", "horizontalLayout_3", {2});
    row("horizontalLayout_7", "horizontalLayout_5", {0});
    row("label_4", "horizontalLayout_5", {2});
    row("m_pThumWheel", "horizontalLayout_5", {3});
    row("line5_2", "horizontalLayout_5", {5});
    row("m_pCopyToClipboardButton", "horizontalLayout_5", {6});
    row("m_pExportButton", "horizontalLayout_5", {7});
    row("frame", "gridLayout_7", {2, 0, 1, 2});
    row("verticalLayout_5", "gridLayout_7", {3, 0, 1, 1});
    row("verticalLayout", "verticalLayout_5", {0});
    row("label", "verticalLayout", {0});
    row("m_pSequenceNameLW", "verticalLayout", {1});
    row("label_2", "verticalLayout", {2});
    row("m_pResultWidget", "verticalLayout", {3});
    row("horizontalLayout_2", "verticalLayout", {4});
    row("m_pLoadButton", "horizontalLayout_2", {1});
    row("verticalLayout_3", "verticalLayout_5", {1});
    row("m_pSOLAGB", "verticalLayout_3", {0});
    row("m_pPhotonsPerSecRB", "gridLayout_3", {0, 0, 1, 1});
    row("m_pSOLACellsRB", "gridLayout_3", {1, 0, 1, 1});
    row("m_pNOVAGB", "verticalLayout_3", {1});
    row("m_pPmolMcmRB", "gridLayout_2", {0, 0, 1, 1});
    row("m_pPmolRB", "gridLayout_2", {1, 0, 1, 1});
    row("m_pNOVACellsRB", "gridLayout_2", {2, 0, 1, 1});
    row("m_pDisplayVoxelsGB", "verticalLayout_5", {2});
    row("groupBox_2", "gridLayout_8", {0, 0, 1, 1});
    row("verticalLayout_4", "gridLayout", {0, 0, 1, 2});
    row("horizontalLayout_4", "verticalLayout_4", {0});
    row("label_5", "horizontalLayout_4", {0});
    row("m_pColorBarMinSpinbox", "horizontalLayout_4", {1});
    row("label_6", "horizontalLayout_4", {2});
    row("m_pColorBarMaxSpinbox", "horizontalLayout_4", {3});
    row("m_pResetColorBarMaxMinButton", "horizontalLayout_4", {4});
    row("m_pColorBarMinMaxSlider", "verticalLayout_4", {1});
    row("m_pColorTableCB", "gridLayout", {1, 0, 1, 1});
    row("verticalLayout_2", "gridLayout", {1, 1, 2, 1});
    row("m_pGLPalettePixmapFrame", "verticalLayout_2", {0});
    row("m_pSourceColorTableSlider", "verticalLayout_2", {1});
    row("m_pReverseColorMapCheck", "gridLayout", {2, 0, 1, 1});
    row("m_pLogarithmicScaleCheck", "gridLayout", {3, 0, 1, 1});
    row("m_pMIPCheck", "gridLayout", {3, 1, 1, 1});
    row("m_pDisplaySurfaceGB", "verticalLayout_5", {3});
    row("horizontalLayout", "gridLayout_9", {0, 0, 1, 1});
    row("label_13", "horizontalLayout", {0});
    row("m_pOpacitySlider", "horizontalLayout", {1});
    row("m_pOpacitySpinBox", "horizontalLayout", {2});
    row("m_pDisplayPhotonDensityMap", "gridLayout_9", {1, 0, 1, 1});
    row("m_p3DBrowserTabWidget", "gridLayout_7", {3, 1, 1, 1});
    row("widget", "gridLayout_10", {0, 0, 1, 1});
    row("label_3", "gridLayout_4", {0, 0, 1, 1});
    row("m_pWaveLengthCB", "gridLayout_4", {0, 1, 1, 1});
    row("line5_3", "gridLayout_4", {0, 3, 1, 1});
    row("m_pClear3DViewButton", "gridLayout_4", {0, 4, 1, 1});
    row("m_pSelectVoxelButton", "gridLayout_4", {0, 5, 1, 1});
    row("m_pResultViewFrame", "gridLayout_10", {1, 0, 1, 1});
    row("widget_2", "gridLayout_6", {0, 0, 1, 1});
    row("m_pAnalysisSelectionLabel", "gridLayout_5", {0, 1, 1, 1});
    row("m_pAnalysisSelectCB", "gridLayout_5", {0, 2, 1, 1});
    row("line5_4", "gridLayout_5", {0, 3, 1, 1});
    row("m_pPlotSelectionLabel", "gridLayout_5", {0, 5, 1, 1});
    row("m_pPlotSelectCB", "gridLayout_5", {0, 6, 1, 1});
    row("m_pPlotViewFrame", "gridLayout_6", {1, 0, 1, 1});
}

void tst_formlayout::places()
{
    QFETCH(QString, strLayout);
    QFETCH(QVector<int>, vecPlace);
    SForm objForm;
    QObject* pChild = objForm.object(QString::fromLatin1(QTest::currentDataTag()));
    int nPlace = -1;
    QLayout* pLayout = layoutOf(&objForm.objWidget, pChild, nPlace);
    QVERIFY(pLayout != nullptr);
    QCOMPARE(pLayout->objectName(), strLayout);
    QCOMPARE(pLayout->itemAt(nPlace)->alignment(), Qt::Alignment());
    if (auto* pGrid = qobject_cast<QGridLayout*>(pLayout))
    {
        QVector<int> vecSeen(4);
        pGrid->getItemPosition(nPlace, &vecSeen[0], &vecSeen[1], &vecSeen[2], &vecSeen[3]);
        QCOMPARE(vecSeen, vecPlace);
    }
    else
    {
        QCOMPARE(QVector<int>{nPlace}, vecPlace);
        QCOMPARE(static_cast<QBoxLayout*>(pLayout)->stretch(nPlace), 0);
    }
    // A widget's parent is the nearest widget that encloses it.
    if (pChild->isWidgetType())
    {
        QCOMPARE(pChild->parent(), static_cast<QObject*>(pLayout->parentWidget()));
    }
}

void tst_formlayout::spacers_data()
{
    QTest::addColumn<QString>("strLayout");
    QTest::addColumn<int>("nPlace");
    QTest::addColumn<QSize>("objHint");
    QTest::addColumn<QString>("strPolicy");
    const auto row = [](const char* pLayout, int nPlace, int nWidth, int nHeight, const char* pPolicy)
    {
        QTest::addRow("%s %d", pLayout, nPlace)
            << QString::fromLatin1(pLayout) << nPlace << QSize(nWidth, nHeight) << QString::fromLatin1(pPolicy);
    };
    row("horizontalLayout_3", 1, 72, 20, "Expanding/Minimum 0/0");
    row("horizontalLayout_5", 1, 0, 0, "Preferred/Minimum 0/0");
    row("horizontalLayout_5", 4, 100, 20, "Expanding/Minimum 0/0");
    row("horizontalLayout_2", 0, 0, 0, "Preferred/Minimum 0/0");
    row("gridLayout_4", -1, 520, 21, "Expanding/Minimum 0/0");
    row("gridLayout_5", -1, 520, 21, "Expanding/Minimum 0/0");
}

void tst_formlayout::spacers()
{
    QFETCH(QString, strLayout);
    QFETCH(int, nPlace);
    QFETCH(QSize, objHint);
    QFETCH(QString, strPolicy);
    SForm objForm;
    auto* pLayout = qobject_cast<QLayout*>(objForm.object(strLayout));
    QVERIFY(pLayout != nullptr);
    QLayoutItem* pItem = nullptr;
    if (auto* pGrid = qobject_cast<QGridLayout*>(pLayout))
    {
        pItem = pGrid->itemAtPosition(0, strLayout == QLatin1String("gridLayout_4") ? 2 : 0);
    }
    else
    {
        pItem = pLayout->itemAt(nPlace);
    }
    QVERIFY(pItem != nullptr);
    QVERIFY(pItem->spacerItem() != nullptr);
    QCOMPARE(pItem->sizeHint(), objHint);
    QCOMPARE(policyText(pItem->spacerItem()->sizePolicy()), strPolicy);
}

void tst_formlayout::policies_data()
{
    QTest::addColumn<QString>("strPolicy");
    const auto row = [](const char* pName, const char* pPolicy) { QTest::newRow(pName) << QString::fromLatin1(pPolicy); };
    row("m_pThumWheel", "Expanding/Fixed 0/0");
    row("m_pCopyToClipboardButton", "Fixed/Fixed 0/0");
    row("m_pExportButton", "Fixed/Fixed 0/0");
    row("m_pSequenceNameLW", "Preferred/Expanding 0/0");
    row("m_pResultWidget", "Preferred/Expanding 0/0");
    row("m_pLoadButton", "Fixed/Fixed 0/0");
    row("m_pColorBarMinSpinbox", "Fixed/Fixed 1/0");
    row("m_pColorBarMaxSpinbox", "Fixed/Fixed 1/0");
    row("m_pColorBarMinMaxSlider", "Preferred/Preferred 200/0");
    row("m_pColorTableCB", "Minimum/Fixed 0/0");
    row("m_pGLPalettePixmapFrame", "Preferred/Fixed 0/0");
    row("m_pSourceColorTableSlider", "Preferred/Fixed 0/0");
    row("label_13", "Fixed/Maximum 0/0");
    row("m_pOpacitySlider", "Maximum/Fixed 0/0");
    row("m_pOpacitySpinBox", "Fixed/Fixed 0/0");
    row("m_pSelectVoxelButton", "Fixed/Fixed 0/0");
}

void tst_formlayout::policies()
{
    QFETCH(QString, strPolicy);
    SForm objForm;
    const auto* pWidget = qobject_cast<QWidget*>(objForm.object(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(pWidget != nullptr);
    QCOMPARE(policyText(pWidget->sizePolicy()), strPolicy);
}

void tst_formlayout::heightForWidthIsLeftToTheWidget()
{
    SForm objForm;
    QCOMPARE(objForm.objForm.m_pThumWheel->sizePolicy().hasHeightForWidth(), QtThumbWheel().sizePolicy().hasHeightForWidth());
    QCOMPARE(objForm.objForm.label_13->sizePolicy().hasHeightForWidth(), QLabel().sizePolicy().hasHeightForWidth());
    // Every policy of the form takes the bit over from its widget.
    const QStringList lstPolicies = namesInGeneratedClass(QStringLiteral("^        (\\w+)->setSizePolicy\\("));
    QCOMPARE(lstPolicies.size(), 16);
    QCOMPARE(namesInGeneratedClass(QStringLiteral("setHeightForWidth\\((\\w+)->sizePolicy\\(\\)\\.hasHeightForWidth\\(\\)\\)")),
             lstPolicies);
}

ORM_TEST_MAIN(tst_formlayout)
#include "tst_formlayout.moc"
