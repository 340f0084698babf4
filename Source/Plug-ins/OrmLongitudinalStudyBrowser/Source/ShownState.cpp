#include "ShownState.h"

#include "LongitudinalStudyBrowserView.h"
#include "OrmColorTables.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QCoreApplication>
#include <QRadioButton>
#include <QTabWidget>

#include <new>

QString ShownState::unitOf(const QWidget& window, int nKind)
{
    const auto* pGroup = window.findChild<QWidget*>(QLatin1String(nKind == 0 ? "m_pSOLAGB" : "m_pNOVAGB"));
    for (const QRadioButton* pUnit : pGroup->findChildren<QRadioButton*>())
    {
        if (pUnit->isChecked())
        {
            return pUnit->text();
        }
    }
    return {};
}

QString ShownState::pictureOf(const QWidget& window)
{
    if (window.findChild<QTabWidget*>(QStringLiteral("m_p3DBrowserTabWidget"))->currentIndex() == 0)
    {
        return QStringLiteral("view");
    }
    const auto chosen = [&window](const char* pszName) { return window.findChild<QComboBox*>(QLatin1String(pszName))->currentText(); };
    return QStringLiteral("plot of %1 %2").arg(chosen("m_pAnalysisSelectCB"), chosen("m_pPlotSelectCB"));
}

SPictureState ShownState::of(const QWidget& window, const QString& strPicture)
{
    auto* pView = window.findChild<CLongitudinalStudyBrowserView*>();
    SPictureState state;
    state.m_strVersion = QCoreApplication::applicationVersion();
    state.m_strPicture = strPicture;
    for (const sAnalysisBase& result : qAsConst(pView->getAnalysisParams()))
    {
        state.m_lstResults.append(
            {QLatin1String(PictureState::kKinds.at(result.nAnalysisType == 0 ? 0 : 1)), result.strSequenceID, result.strResultName});
    }
    const std::array<COrmPalette*, 2> arrPalettes = {pView->getSOLAColorPalette(), pView->getNOVAColorPalette()};
    const std::array<bool, 2> arrShown = {pView->containsSOLAResults(), pView->containsNOVAResults()};
    for (std::size_t nKind = 0; nKind < arrShown.size(); ++nKind)
    {
        if (arrShown.at(nKind))
        {
            const COrmPalette& palette = *arrPalettes.at(nKind);
            state.m_arrKinds.at(nKind) = SKindState{unitOf(window, static_cast<int>(nKind)),
                                                    getCTNameForColorTable(palette.colorTableType()),
                                                    palette.reversed() != 0,
                                                    palette.logScale() != 0,
                                                    palette.imageMin(),
                                                    palette.imageMax()};
        }
    }
    state.m_bMip = window.findChild<QAbstractButton*>(QStringLiteral("m_pMIPCheck"))->isChecked();
    state.m_nRotation = window.findChild<QAbstractSlider*>(QStringLiteral("m_pThumWheel"))->value();
    return state;
}

void ShownState::sign(const QWidget& window, QImage& image)
{
    try
    {
        PictureState::sign(image, of(window, pictureOf(window)));
    }
    catch (const std::bad_alloc&)
    {
        return;
    }
}
