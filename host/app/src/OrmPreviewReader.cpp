#include "OrmPreviewReader.h"

#include "CPLSettingsFileWrapper.h"
#include "OrmOverlay.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmPreviewReader)
};

QStringList resultNames(const SSequenceFacts& sFacts, const QString& strKind, QString& strProblem)
{
    const QString strFile = sFacts.m_strInfoPath + QStringLiteral("XML/") + strKind + QStringLiteral(".txt");
    if (!QFileInfo::exists(strFile))
        return {};
    CPLSettingsFileWrapper objIndex;
    objIndex.setAutoMenuNameTag(strKind + QLatin1Char('_'));
    objIndex.setMenuNameTag(QStringLiteral("MenuName"));
    objIndex.setFileNameTag(QStringLiteral("FileName"));
    if (objIndex.load(strFile) == 0)
        return objIndex.getMenuNames(strKind);
    strProblem = CText::tr("The list of saved results cannot be read: %1").arg(objIndex.lastError());
    return {};
}

void readPhotograph(const SSequenceFacts& sFacts, SSequencePreview& sPreview)
{
    const auto it = std::find_if(sFacts.m_lstClicks.cbegin(), sFacts.m_lstClicks.cend(),
                                 [](const SClickFacts& sClick) { return !sClick.m_strPhotographicImageFile.isEmpty(); });
    if (it == sFacts.m_lstClicks.cend())
    {
        sPreview.m_strPictureText = CText::tr("This sequence has no photograph.");
        return;
    }
    const QString strFile = OrmClickFacts::photographFile(*it);
    if (strFile.isEmpty())
    {
        sPreview.m_strPictureText = CText::tr("The photograph of %1 is not in its folder.").arg(it->m_strClickNumber);
        return;
    }
    QString strReason;
    const QImage imgRead = OrmOverlay::load(strFile, &strReason);
    if (imgRead.isNull())
    {
        sPreview.m_strPictureText = strReason;
        return;
    }
    const bool bLarge = std::max(imgRead.width(), imgRead.height()) > OrmPreviewReader::s_nPictureEdge;
    sPreview.m_imgPhotograph = bLarge ? imgRead.scaled(OrmPreviewReader::s_nPictureEdge, OrmPreviewReader::s_nPictureEdge,
                                                       Qt::KeepAspectRatio, Qt::SmoothTransformation)
                                      : imgRead;
    sPreview.m_strPictureText = CText::tr("Photograph of %1").arg(it->m_strClickNumber);
}
} // namespace

SSequencePreview OrmPreviewReader::read(const SSequenceFacts& sFacts)
{
    SSequencePreview sPreview;
    sPreview.m_lstSOLA = resultNames(sFacts, QStringLiteral("SOLA"), sPreview.m_strResultsText);
    sPreview.m_lstNOVA = resultNames(sFacts, QStringLiteral("NOVA"), sPreview.m_strResultsText);
    readPhotograph(sFacts, sPreview);
    return sPreview;
}
