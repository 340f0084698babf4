#pragma once

// A study whose voxels have chosen values, the window that shows it, and readers of what voxels and bars look like.

#include "CColorControls.h"
#include "CStudyWriter.h"

#include "COrmPalette.h"
#include "OrmColorTables.h"
#include "ResultUnits.h"

#include <QAction>
#include <QGroupBox>

#include <cmath>
#include <functional>
#include <vector>

#include <GL/gl.h>

namespace ColorsTest
{
/// Protected parts of the view.
struct SViewParts : public CLongitudinalStudyBrowserView
{
    static void setupTile(CLongitudinalStudyBrowserView& objView, int nTile) { (objView.*(&SViewParts::setupViewForResult))(nTile); }
    static float meshOpacity(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewParts::m_fMeshOpacity); }
    static bool usesCustomRange(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewParts::m_bUseCustomRange); }
};

/// A scale as the user sets it, computed here anew.
struct SScale
{
    double fMin = 0.0;
    double fMax = 1.0;
    bool bLog = false;

    double valueAt(double fPlace) const { return bLog ? fMin * std::pow(fMax / fMin, fPlace) : fMin + (fMax - fMin) * fPlace; }
};

/// The place of a bar in the view; pixels from the bottom left.
struct SBarPlace
{
    int nColumn = 0; ///< a column within its colours
    double fBottom = 0.0;
    double fTop = 0.0;

    SBarPlace(const CLongitudinalStudyBrowserView& objView, int nKind, bool bTwo)
    {
        const int nHeight = objView.getGLHeight();
        const int nHalf = nHeight / 2;
        const int nBox = (nHeight - 10) / 2;
        nColumn = objView.getGLWidth() - 90 + 5 + 15;
        // Two bars are squeezed: each has a box of half the height in a viewport that is 5 pixels lower.
        const double fSqueeze = bTwo ? static_cast<double>(nBox) / nHalf : 1.0;
        const int nStart = bTwo && nKind == 0 ? nHalf : 0;
        fBottom = nStart + 30.0 * fSqueeze;
        fTop = nStart + (30.0 + (bTwo ? nHalf - 40 : nHeight - 45)) * fSqueeze;
    }

    /// The place on the scale, 0 to 1, of the centre of a row.
    double placeOf(int nRow) const { return (nRow + 0.5 - fBottom) / (fTop - fBottom); }
    int firstRow() const { return static_cast<int>(std::ceil(fBottom - 0.5 + 1e-3)); }
    int lastRow() const { return static_cast<int>(std::ceil(fTop - 0.5 - 1e-3)) - 1; }

    /// Rows spread over the bar from a place to its top. None of them is so close to the border between two of the 256 colours
    /// that the rounding of a value to single precision could change its colour.
    std::vector<int> rows(int nRows, double fFrom) const
    {
        std::vector<int> vecRows;
        for (int i = 0; i < nRows; ++i)
        {
            const double fPlace = fFrom + (1.0 - fFrom) * i / (nRows - 1);
            int nRow = std::min(lastRow(), static_cast<int>(fBottom + fPlace * (fTop - fBottom)));
            const auto fnBorder = [&] { return std::abs(std::fmod(placeOf(nRow) * 255.0, 1.0) - 0.5) < 0.02; };
            while (nRow > firstRow() && fnBorder())
            {
                --nRow;
            }
            vecRows.push_back(nRow);
        }
        return vecRows;
    }
};

constexpr int kGrid = 5;         ///< voxels stand in kGrid x kGrid places
constexpr double kSpacing = 3.2; ///< millimetres between them, so that each stands alone
constexpr int kVoxels = kGrid * kGrid;

/// A result with kVoxels voxels in a plane, each alone before the background. They are too small for the loader to refine them, and it
/// shows them with the values given here.
inline SResultDocument plane(int nKind, const QString& strSequenceID, const std::vector<float>& vecValues)
{
    SResultDocument objDocument(nKind == 0 ? SResultDocument::SOLA : SResultDocument::NOVA);
    objDocument.strSequenceID = strSequenceID;
    objDocument.dVoxelSize = 0.4;
    objDocument.vecVoxels.clear();
    const double fUnit = ResultUnits::divisor(nKind, QString(), QString());
    for (int i = 0; i < static_cast<int>(vecValues.size()); ++i)
    {
        const int nColumn = i % kGrid - kGrid / 2;
        const int nRow = i / kGrid - kGrid / 2;
        objDocument.vecVoxels.push_back(static_cast<float>(kSpacing * nColumn));
        objDocument.vecVoxels.push_back(static_cast<float>(kSpacing * nRow));
        objDocument.vecVoxels.push_back(0.0f);
        objDocument.vecVoxels.push_back(static_cast<float>(static_cast<double>(vecValues[static_cast<size_t>(i)]) * fUnit));
    }
    return objDocument;
}

/// kVoxels values from fMin to fMax.
inline std::vector<float> ramp(float fMin, float fMax)
{
    std::vector<float> vecValues;
    vecValues.reserve(kVoxels);
    for (int i = 0; i < kVoxels; ++i)
    {
        vecValues.push_back(fMin + (fMax - fMin) * static_cast<float>(i) / static_cast<float>(kVoxels - 1));
    }
    return vecValues;
}

/// The window before a study with the sequences S1 and S2 of SOLA and N1 of NOVA.
class CColorTool : public CColorControls
{
public:
    CColorTool() : CColorControls(m_objTool)
    {
        m_objWriter.addSequence(QStringLiteral("S1"));
        m_objWriter.addSequence(QStringLiteral("S2"));
        m_objWriter.addSequence(QStringLiteral("N1"), SSequenceLook::fluorescent());
        m_objTool.open(m_objWriter.folder());
    }

    void write(int nKind, const QString& strName, const std::vector<float>& vecValues)
    {
        const QString strSequenceID = nKind == 0 ? QStringLiteral("S1") : QStringLiteral("N1");
        m_objWriter.addResult(strSequenceID, strName, plane(nKind, strSequenceID, vecValues));
    }
    void chooseKind(int nKind)
    {
        m_objTool.chooseSequence(nKind == 0 ? QStringLiteral("SOLA S1") : QStringLiteral("NOVA N1"));
        settle();
    }
    void load(int nKind, const QStringList& lstNames)
    {
        chooseKind(nKind);
        const int nBefore = records().size();
        m_objTool.load(lstNames);
        if (records().size() != nBefore + lstNames.size())
        {
            TestWidgets::fail(QStringLiteral("Not everything was loaded: ") + m_objTool.host().hostLog().join(QLatin1Char('\n')));
        }
        settle();
    }
    /// Takes loaded results out as a user does: by selecting their tiles and the menu of the right button.
    void remove(const QStringList& lstKeys)
    {
        for (const QString& strKey : lstKeys)
        {
            view().getSelectedList() = QStringList{strKey};
            view().onClickRemoveSelectedAction();
            settle();
        }
    }
    /// Paints until the view asks for no more.
    void settle()
    {
        QCoreApplication::processEvents();
        view().update();
        view().settle();
    }
    QImage picture()
    {
        settle();
        return view().getPrintImage();
    }

    QList<sAnalysisBase>& records() { return view().getAnalysisParams(); }
    void setCheck(const char* pName, bool bOn)
    {
        if (check(pName)->isChecked() != bOn)
        {
            check(pName)->click();
        }
    }

    /// Types a number as a whole.
    static void type(QDoubleSpinBox* pBox, double fNumber) { CColorControls::type(pBox, QString::number(fNumber, 'g', 10)); }
    void typeRange(double fMin, double fMax)
    {
        type(maximum(), fMax);
        type(minimum(), fMin);
    }

    /// The pixel of a voxel of a tile, from the top left of the view as it stands unturned.
    QPoint pixelOf(int nTile, const C3DVolume::Voxel& objVoxel)
    {
        float afProjection[16] = {};
        int anViewport[4] = {};
        view().makeCurrent();
        SViewParts::setupTile(view(), nTile);
        glGetFloatv(GL_PROJECTION_MATRIX, afProjection);
        glGetIntegerv(GL_VIEWPORT, anViewport);
        const double fX = anViewport[0] + (afProjection[0] * objVoxel.x + afProjection[12] + 1.0f) * anViewport[2] / 2.0;
        const double fY = anViewport[1] + (afProjection[5] * objVoxel.y + afProjection[13] + 1.0f) * anViewport[3] / 2.0;
        return {static_cast<int>(fX), view().getGLHeight() - 1 - static_cast<int>(fY)};
    }

    /// What of tiles, bars and panel does not agree; empty if all do.
    QString disagreement(int nShownKind)
    {
        for (int nKind = 0; nKind < 2; ++nKind)
        {
            const COrmPalette& objBar = nKind == 0 ? *view().getSOLAColorPalette() : *view().getNOVAColorPalette();
            const C3DVolume* pFirst = nullptr;
            for (sAnalysisBase& objRecord : records())
            {
                if (objRecord.nAnalysisType != nKind)
                {
                    continue;
                }
                const QString strBar = describe(objBar);
                const QString strTile = describe(*objRecord.objVolume.getColorPalette());
                if (strTile != strBar)
                {
                    return QStringLiteral("%1: %2, its bar: %3").arg(objRecord.strResultName, strTile, strBar);
                }
                if (pFirst != nullptr && pFirst->m_bMIP != objRecord.objVolume.m_bMIP)
                {
                    return QStringLiteral("%1 is projected otherwise").arg(objRecord.strResultName);
                }
                pFirst = &objRecord.objVolume;
            }
            if (nKind != nShownKind || pFirst == nullptr)
            {
                continue;
            }
            const QString strPanel =
                describe(table()->currentText(), tableSlider()->lowerValue(), tableSlider()->upperValue(),
                         static_cast<float>(minimum()->value()), static_cast<float>(maximum()->value()),
                         check("m_pReverseColorMapCheck")->isChecked(), check("m_pLogarithmicScaleCheck")->isChecked());
            if (strPanel != describe(objBar))
            {
                return QStringLiteral("panel: %1, bar: %2").arg(strPanel, describe(objBar));
            }
            if (check("m_pMIPCheck")->isChecked() != pFirst->m_bMIP)
            {
                return QStringLiteral("the box of the projection does not show what the tiles do");
            }
        }
        return QString();
    }

    static QString describe(const COrmPalette& objPalette)
    {
        return describe(getCTNameForColorTable(objPalette.colorTableType()), qRound(objPalette.getColorTableLow() * 100.0f),
                        qRound(objPalette.getColorTableHigh() * 100.0f), static_cast<float>(objPalette.imageMin()),
                        static_cast<float>(objPalette.imageMax()), objPalette.reversed() != 0, objPalette.logScale() != 0);
    }

private:
    static QString describe(const QString& strTable, int nLow, int nHigh, float fMin, float fMax, bool bReversed, bool bLog)
    {
        return QStringLiteral("%1 %2-%3 %4..%5%6%7")
            .arg(strTable)
            .arg(nLow)
            .arg(nHigh)
            .arg(static_cast<double>(fMin), 0, 'g', 5)
            .arg(static_cast<double>(fMax), 0, 'g', 5)
            .arg(bReversed ? QStringLiteral(" reversed") : QString(), bLog ? QStringLiteral(" log") : QString());
    }

    CStudyWriter m_objWriter;
    CToolWindow m_objTool;
};

inline QString text(QRgb nColor)
{
    return QStringLiteral("%1 %2 %3").arg(qRed(nColor)).arg(qGreen(nColor)).arg(qBlue(nColor));
}
} // namespace ColorsTest
