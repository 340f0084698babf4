#include "CMonkeyRules.h"

#include "COrmProcess.h"
#include "CToolWindow.h"
#include "QDoubleSpinBoxEx.h"
#include "QSpanSlider.h"
#include "QtThumbWheel.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QOpenGLContext>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include <GL/gl.h>

namespace
{
constexpr int s_nSOLA = 0;
constexpr int s_nNOVA = 1;

/// Nothing where the condition holds.
QString unless(bool bHolds, const QString& strWhat)
{
    return bHolds ? QString() : strWhat;
}

/// The first one of several outcomes that tells of something.
template <class... Rules>
QString firstOf(const Rules&... fnRules)
{
    QString strBroken;
    const auto take = [&strBroken](const auto& fnRule)
    {
        if (strBroken.isNull())
        {
            strBroken = fnRule();
        }
    };
    (take(fnRules), ...);
    return strBroken;
}

QString brokenSpan(const QSpanSlider* pSlider)
{
    const bool bOrdered = pSlider->minimum() <= pSlider->lowerValue() && pSlider->lowerValue() <= pSlider->upperValue() &&
                          pSlider->upperValue() <= pSlider->maximum();
    return unless(bOrdered, QStringLiteral("%1 stands at %2 to %3 of %4 to %5")
                                .arg(pSlider->objectName())
                                .arg(pSlider->lowerValue())
                                .arg(pSlider->upperValue())
                                .arg(pSlider->minimum())
                                .arg(pSlider->maximum()));
}

QString brokenBox(const QDoubleSpinBoxEx* pBox)
{
    const bool bHolds = std::isfinite(pBox->value()) && std::isfinite(pBox->singleStep()) && pBox->singleStep() >= 0.0 &&
                        pBox->minimum() <= pBox->value() && pBox->value() <= pBox->maximum();
    return unless(bHolds, QStringLiteral("%1 shows %2 of %3 to %4, step %5")
                              .arg(pBox->objectName())
                              .arg(pBox->value())
                              .arg(pBox->minimum())
                              .arg(pBox->maximum())
                              .arg(pBox->singleStep()));
}

int stateOf(GLenum eName)
{
    GLint nValue = 0;
    glGetIntegerv(eName, &nValue);
    return nValue;
}
} // namespace

CMonkeyRules::CMonkeyRules(CToolWindow& objTool, const QSet<QString>& setShared) : m_objTool(objTool), m_setShared(setShared) {}

template <class T>
T* CMonkeyRules::get(const char* pName) const
{
    return m_objTool.get<T>(pName);
}

bool CMonkeyRules::isEnabled(const char* pName) const
{
    // Its own state: on a tab that is not shown it is the same.
    return get<QWidget>(pName)->isEnabledTo(&m_objTool.window());
}

int CMonkeyRules::count(int nKind) const
{
    int nCount = 0;
    for (const sAnalysisBase& objRecord : qAsConst(m_objTool.view().getAnalysisParams()))
    {
        nCount += objRecord.nAnalysisType == nKind ? 1 : 0;
    }
    return nCount;
}

int CMonkeyRules::shownKind() const
{
    const QString strTitle = get<QGroupBox>("m_pDisplayVoxelsGB")->title();
    if (strTitle.endsWith(QLatin1String("[SOLA]")))
    {
        return s_nSOLA;
    }
    return strTitle.endsWith(QLatin1String("[NOVA]")) ? s_nNOVA : -1;
}

QString CMonkeyRules::broken()
{
    return firstOf([this] { return brokenByHost(); }, [this] { return brokenByKeys(); }, [this] { return brokenByRanges(); },
                   [this] { return brokenBySliders(); }, [this] { return brokenByControls(); }, [this] { return brokenByOpenGL(); });
}

QString CMonkeyRules::brokenByHost() const
{
    return firstOf([] { return unless(!COrmProcess::isUserInteractionDisabled(), QStringLiteral("the interface is locked")); },
                   []
                   { return unless(!COrmProcess::isProcessInProgress(eLongProcessAnalysis), QStringLiteral("a long process still runs")); },
                   [] { return unless(QApplication::overrideCursor() == nullptr, QStringLiteral("the cursor is still the wait cursor")); });
}

QString CMonkeyRules::brokenByKeys()
{
    const QStringList lstKeys = m_objTool.view().getLoadedResult();
    const QStringList lstTiles = m_objTool.tiles();
    const QSet<QString> setKeys(lstKeys.begin(), lstKeys.end());
    const QSet<QString> setTiles(lstTiles.begin(), lstTiles.end());
    const bool bSequenceRemoved = !m_objTool.host().callsOf(QStringLiteral("box warning: Are you sure you want to remove")).isEmpty();
    // A removed sequence takes the keys of what its list shows, also one that another sequence's result has. That one's tile stays, and the
    // same key can be loaded again. This is meant.
    if (bSequenceRemoved)
    {
        m_setTaken += (setTiles & m_setKeys & m_setShared) - setKeys;
    }
    m_setTaken &= setTiles + setKeys;
    QStringList lstOthers;
    std::copy_if(lstTiles.begin(), lstTiles.end(), std::back_inserter(lstOthers),
                 [this](const QString& strKey) { return !m_setTaken.contains(strKey); });
    if ((setTiles - m_setTaken).size() != lstOthers.size() || setKeys.size() != lstKeys.size())
    {
        return QStringLiteral("twice the same key: tiles %1, keys %2")
            .arg(lstTiles.join(QStringLiteral(", ")), lstKeys.join(QStringLiteral(", ")));
    }
    if (!setKeys.contains(setTiles - m_setTaken))
    {
        return QStringLiteral("a tile without its key: tiles %1, keys %2")
            .arg(lstTiles.join(QStringLiteral(", ")), lstKeys.join(QStringLiteral(", ")));
    }
    bool bNOVA = false;
    bool bOutOfOrder = false;
    for (const sAnalysisBase& objRecord : qAsConst(m_objTool.view().getAnalysisParams()))
    {
        bNOVA = bNOVA || objRecord.nAnalysisType == s_nNOVA;
        bOutOfOrder = bOutOfOrder || (bNOVA && objRecord.nAnalysisType == s_nSOLA);
    }
    // Where a tile goes is decided by the kinds in the last frame. A view that is hidden or has no extent paints none, and then a SOLA tile
    // goes to the end. This is meant.
    if (bOutOfOrder && !m_bOutOfOrder && m_bNOVAInFrame)
    {
        return QStringLiteral("a SOLA tile behind a NOVA one");
    }
    m_bOutOfOrder = bOutOfOrder;
    m_bNOVAInFrame = bNOVA && m_objTool.view().containsNOVAResults();
    // A removal of a sequence takes the tiles of all sequences whose ID holds its own, and of both kinds; it takes the keys of what its
    // list shows. A SOLA result that is loaded right after the last NOVA one has gone gets no tile. Both are meant.
    const QSet<QString> setWithoutTile = setKeys - setTiles;
    for (const QString& strKey : setWithoutTile - m_setWithoutTile)
    {
        if (m_setKeys.contains(strKey) ? !bSequenceRemoved : bNOVA)
        {
            return QStringLiteral("%1 has no tile").arg(strKey);
        }
    }
    m_setWithoutTile = setWithoutTile;
    m_setKeys = setKeys;
    return QString();
}

QString CMonkeyRules::brokenByRanges() const
{
    const CLongitudinalStudyBrowserView& objView = m_objTool.view();
    std::array<float, 4> afCurrent{};
    std::array<float, 4> afAll{};
    objView.getMinMax(&afCurrent[0], &afCurrent[1], &afCurrent[2], &afCurrent[3]);
    objView.getAggregateMinMax(&afAll[0], &afAll[1], &afAll[2], &afAll[3]);
    for (const auto& af : {afCurrent, afAll})
    {
        if (!(af[0] <= af[1]) || !(af[2] <= af[3]))
        {
            return QStringLiteral("a range that is not ordered: %1 to %2, %3 to %4").arg(af[0]).arg(af[1]).arg(af[2]).arg(af[3]);
        }
    }
    for (const sAnalysisBase& objRecord : qAsConst(m_objTool.view().getAnalysisParams()))
    {
        const float fLow = afAll[objRecord.nAnalysisType == s_nSOLA ? 0 : 2];
        const float fHigh = afAll[objRecord.nAnalysisType == s_nSOLA ? 1 : 3];
        const C3DVolume& objVolume = objRecord.objVolume;
        if (objVolume.getAttribMinValue() < fLow || objVolume.getAttribMaxValue() > fHigh)
        {
            return QStringLiteral("%1 has values outside of the range of all").arg(objRecord.strResultName);
        }
        for (const double fPlace : {objRecord.fSelectLeft, objRecord.fSelectTop, objRecord.fSelectRight, objRecord.fSelectBottom})
        {
            if (!std::isfinite(fPlace))
            {
                return QStringLiteral("the rectangle of %1 has no place").arg(objRecord.strResultName);
            }
        }
    }
    return QString();
}

QString CMonkeyRules::brokenBySliders() const
{
    return firstOf([this] { return brokenSpan(get<QSpanSlider>("m_pColorBarMinMaxSlider")); },
                   [this] { return brokenSpan(get<QSpanSlider>("m_pSourceColorTableSlider")); },
                   [this] { return brokenBox(get<QDoubleSpinBoxEx>("m_pColorBarMinSpinbox")); },
                   [this] { return brokenBox(get<QDoubleSpinBoxEx>("m_pColorBarMaxSpinbox")); },
                   [this]
                   {
                       return unless(get<QSlider>("m_pOpacitySlider")->value() == get<QSpinBox>("m_pOpacitySpinBox")->value(),
                                     QStringLiteral("two opacities"));
                   },
                   [this]
                   {
                       const int nAngle = get<QtThumbWheel>("m_pThumWheel")->value();
                       return unless(nAngle >= 0 && nAngle <= 360, QStringLiteral("the wheel stands at %1").arg(nAngle));
                   });
}

QString CMonkeyRules::brokenByControls() const
{
    const bool bWheel = get<QTabWidget>("m_p3DBrowserTabWidget")->currentIndex() == 0;
    if (isEnabled("m_pThumWheel") != bWheel)
    {
        return QStringLiteral("the wheel is %1 on this tab").arg(bWheel ? QStringLiteral("off") : QStringLiteral("on"));
    }
    // A window that was closed, or from which the last sequence has gone, sorts its controls out when it lists one again.
    if (!m_objTool.window().isVisible() || get<QListWidget>("m_pSequenceNameLW")->count() == 0)
    {
        return QString();
    }
    const int nKeys = m_objTool.view().getLoadedResult().size();
    const bool bSelected = !get<QListWidget>("m_pResultWidget")->selectedItems().isEmpty();
    const auto enabled = [this](const char* pName, bool bEnabled)
    {
        return unless(isEnabled(pName) == bEnabled,
                      QStringLiteral("%1 should be %2").arg(QLatin1String(pName), bEnabled ? QStringLiteral("on") : QStringLiteral("off")));
    };
    const int nKind = shownKind();
    return firstOf([&] { return enabled("m_pLoadButton", bSelected); }, [&] { return enabled("m_pClear3DViewButton", nKeys > 0); },
                   [&] { return enabled("m_pSelectVoxelButton", nKeys > 0); },
                   [&]
                   {
                       return unless(nKeys > 0 || !get<QToolButton>("m_pSelectVoxelButton")->isChecked(),
                                     QStringLiteral("the measuring tool is on without results"));
                   },
                   // With a single result the choice of the plot is on after a load, off after a removal, until the lists change.
                   [&] { return nKeys == 1 ? QString() : enabled("m_pPlotSelectCB", nKeys > 1); },
                   [&]
                   {
                       const bool bOn = isEnabled("m_pWaveLengthCB");
                       return unless(!bOn || (nKeys > 0 && get<QComboBox>("m_pWaveLengthCB")->count() > 0),
                                     QStringLiteral("wavelengths are offered without a result"));
                   },
                   [&] { return unless(nKind >= 0, QStringLiteral("no kind is shown")); },
                   [&]
                   {
                       return unless(get<QGroupBox>("m_pSOLAGB")->isHidden() == (nKind != s_nSOLA) &&
                                         get<QGroupBox>("m_pNOVAGB")->isHidden() == (nKind != s_nNOVA),
                                     QStringLiteral("the units are not those of the kind shown"));
                   },
                   [&] { return brokenUnit(s_nSOLA, "m_pSOLAGB"); }, [&] { return brokenUnit(s_nNOVA, "m_pNOVAGB"); });
}

QString CMonkeyRules::brokenUnit(int nKind, const char* pBoxName) const
{
    // The unit of values that are shown is not to be changed. A tile whose key a removed sequence took holds no unit any more. This is
    // meant.
    const QList<sAnalysisBase>& lstRecords = m_objTool.view().getAnalysisParams();
    const auto itHolder =
        std::find_if(lstRecords.begin(), lstRecords.end(),
                     [&](const sAnalysisBase& objRecord) {
                         return objRecord.nAnalysisType == nKind && !m_setTaken.contains(objRecord.strSequenceID + objRecord.strResultName);
                     });
    return unless(itHolder == lstRecords.end() || !isEnabled(pBoxName),
                  QStringLiteral("the unit in %1 is free: tiles %2, keys %3")
                      .arg(QLatin1String(pBoxName), m_objTool.tiles().join(QStringLiteral(", ")),
                           m_objTool.view().getLoadedResult().join(QStringLiteral(", "))));
}

QString CMonkeyRules::brokenWhenSettled()
{
    CLongitudinalStudyBrowserView& objView = m_objTool.view();
    if (!objView.isVisible() || objView.width() == 0 || objView.height() == 0)
    {
        return QString(); // no frame is painted
    }
    objView.settle();
    m_objTool.window().updateUIControls();
    const bool bSOLA = count(s_nSOLA) > 0;
    const bool bNOVA = count(s_nNOVA) > 0;
    if (objView.containsSOLAResults() != bSOLA || objView.containsNOVAResults() != bNOVA)
    {
        return QStringLiteral("a frame does not know which kinds it shows");
    }
    if (get<QListWidget>("m_pSequenceNameLW")->count() == 0)
    {
        return QString();
    }
    const auto* pAnalysis = get<QComboBox>("m_pAnalysisSelectCB");
    if (isEnabled("m_pAnalysisSelectCB") != (bSOLA && bNOVA))
    {
        return QStringLiteral("the choice of the kind to plot does not follow from the kinds shown");
    }
    if (bSOLA != bNOVA && pAnalysis->currentText() != (bSOLA ? QLatin1String("SOLA") : QLatin1String("NOVA")))
    {
        return QStringLiteral("the only kind is not the one to plot");
    }
    const int nKind = shownKind();
    if (isEnabled("m_pDisplayVoxelsGB") != (nKind == s_nSOLA ? bSOLA : bNOVA))
    {
        return QStringLiteral("the voxels' box does not follow from the kinds shown");
    }
    return broken();
}

QString CMonkeyRules::brokenByOpenGL() const
{
    for (const QString& strEntry : m_objTool.host().hostLog())
    {
        if (strEntry.contains(QLatin1String("OpenGL reports error")))
        {
            return strEntry;
        }
    }
    CLongitudinalStudyBrowserView& objView = m_objTool.view();
    objView.makeCurrent();
    if (QOpenGLContext::currentContext() == nullptr)
    {
        return QString(); // not shown yet
    }
    for (GLenum eError = glGetError(); eError != GL_NO_ERROR; eError = glGetError())
    {
        // A window without room makes negative sizes and boxes without extent, which the view passes on as they are.
        if (eError != GL_INVALID_VALUE)
        {
            return QStringLiteral("OpenGL reports error 0x%1").arg(eError, 4, 16, QLatin1Char('0'));
        }
    }
    const bool bClean = stateOf(GL_ATTRIB_STACK_DEPTH) == 0 && stateOf(GL_MODELVIEW_STACK_DEPTH) == 1 &&
                        stateOf(GL_PROJECTION_STACK_DEPTH) == 1 && stateOf(GL_NAME_STACK_DEPTH) == 0 &&
                        stateOf(GL_RENDER_MODE) == GL_RENDER;
    return unless(bClean, QStringLiteral("OpenGL's stacks are not empty"));
}
