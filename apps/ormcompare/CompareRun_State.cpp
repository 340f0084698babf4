#include "CompareRun.h"

#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "GrowthPlot.h"
#include "GrowthSeries.h"
#include "OrmImageFile.h"
#include "ShownState.h"
#include "StudyTimes.h"

#include <QApplication>
#include <QComboBox>
#include <QFileInfo>

#include <cmath>

namespace
{
/// The value of an option among arguments, "--name=value"; empty where it is not there.
QString valueOf(const QStringList& lstArguments, const QString& strName)
{
    const QString strBegin = QStringLiteral("--%1=").arg(strName);
    for (const QString& strArgument : lstArguments)
    {
        if (strArgument.startsWith(strBegin))
        {
            return strArgument.mid(strBegin.size());
        }
    }
    return {};
}
} // namespace

void CCompareRun::collectTimes()
{
    QVector<STimePoint> lstTimePoints;
    const QList<COrmSequenceDataset*> lstSequences = m_pSequences->sequences();
    for (const COrmSequenceDataset* pSequence : lstSequences)
    {
        lstTimePoints.append({pSequence->getFacts().m_strSubject, pSequence->getFacts().m_strDateTime});
    }
    const QVector<double> lstDays = StudyTimes::days(lstTimePoints);
    QHash<QString, SResultTime> mapTimes;
    for (int nAt = 0; nAt < lstTimePoints.size(); ++nAt)
    {
        mapTimes.insert(lstSequences.at(nAt)->getSequenceID(),
                        {lstTimePoints.at(nAt).m_strSubject, lstTimePoints.at(nAt).m_strDate, lstDays.at(nAt)});
    }
    QSet<QPair<QString, QString>> setTold;
    for (SLoadedResult& result : m_objReport.m_lstResults)
    {
        result.m_objTime = mapTimes.value(result.m_strSequence);
        setTold.insert({result.m_strKind, result.m_strSequence});
    }
    for (SFailedResult& failed : m_objReport.m_lstFailed)
    {
        failed.m_objTime = mapTimes.value(failed.m_strSequence);
        setTold.insert({failed.m_strKind, failed.m_strSequence});
    }
    for (const auto& [strKind, strSequence] : qAsConst(m_lstAsked))
    {
        if (!setTold.contains({strKind, strSequence}))
        {
            m_objReport.m_lstEmpty.append({strKind, strSequence, mapTimes.value(strSequence)});
        }
    }
    m_objReport.m_bMeasured = m_options.m_objRegion.has_value();
}

void CCompareRun::writeGrowth()
{
    if (m_options.m_lstGrowthFiles.isEmpty())
    {
        return;
    }
    const QVector<SGrowthSeries> lstSeries = GrowthSeries::of(m_objReport);
    for (const QString& strFile : qAsConst(m_options.m_lstGrowthFiles))
    {
        if (QFileInfo(strFile).suffix().compare(QLatin1String("csv"), Qt::CaseInsensitive) == 0)
        {
            save(strFile, GrowthSeries::csv(lstSeries));
            continue;
        }
        const QImage plot = GrowthPlot::draw(lstSeries);
        if (!plot.isNull())
        {
            savePicture(strFile, plot, QStringLiteral("growth"));
        }
        else if (!m_options.m_bUsualFiles)
        {
            fail(QStringLiteral("%1: there is no value with a known day to plot.").arg(strFile));
        }
    }
}

SPictureState CCompareRun::state(const QString& strPicture) const
{
    SPictureState state = ShownState::of(*m_pWindow, strPicture);
    state.m_lstLook = m_options.m_lstLook;
    state.m_lstRefused = m_lstRefused;
    state.m_strWavelength = m_options.m_strWavelength;
    state.m_strRegion = valueOf(m_options.m_lstLook, QStringLiteral("measure"));
    return state;
}

void CCompareRun::compareWithLike()
{
    if (!m_objLike)
    {
        return;
    }
    const SPictureState now = state(QString());
    for (std::size_t nKind = 0; nKind < now.m_arrKinds.size(); ++nKind)
    {
        const std::optional<SKindState>& was = m_objLike->m_arrKinds.at(nKind);
        const std::optional<SKindState>& is = now.m_arrKinds.at(nKind);
        if (was && is && (was->m_fMin != is->m_fMin || was->m_fMax != is->m_fMax))
        {
            fail(QStringLiteral(
                     "The values of %1 have changed since the picture was made: its colours ran from %2 to %3, now from %4 to %5.")
                     .arg(kindName(static_cast<int>(nKind)))
                     .arg(was->m_fMin)
                     .arg(was->m_fMax)
                     .arg(is->m_fMin)
                     .arg(is->m_fMax));
        }
    }
    if (m_objLike->m_bMip != now.m_bMip || m_objLike->m_nRotation != now.m_nRotation)
    {
        fail(QStringLiteral("The picture was made at another rotation or projection than can be repeated."));
    }
}

void CCompareRun::savePicture(const QString& strFile, const QImage& image, const QString& strShows)
{
    QImage picture = image;
    if (QFileInfo(strFile).suffix().compare(QLatin1String("png"), Qt::CaseInsensitive) == 0)
    {
        PictureState::sign(picture, state(strShows));
    }
    const QString strWrong = OrmImageFile::write(picture, strFile);
    if (!strWrong.isEmpty())
    {
        fail(strWrong);
        return;
    }
    say(QStringLiteral("Written: %1").arg(shownName(strFile)));
}
