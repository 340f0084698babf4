#include "COrmBasePalette.h"

#include "COrmLog.h"
#include "CPLResultXMLWrapper.h"
#include "SAnalysisBase.h"

#include <QSemaphore>

#include <utility>
#include <vector>

namespace
{
constexpr int SavePromptPermits = 5;

/// One for all palettes of the process.
QSemaphore& savePromptSemaphore()
{
    static QSemaphore objSemaphore(SavePromptPermits);
    return objSemaphore;
}
} // namespace

COrmBasePalette::COrmBasePalette(QWidget* pParent, const char* pszName, bool bModal, Qt::WindowFlags eFlags) : QDialog(pParent, eFlags)
{
    if (pszName)
    {
        setObjectName(QString::fromUtf8(pszName));
    }
    setModal(bModal);
}

COrmBasePalette::~COrmBasePalette() = default;

bool COrmBasePalette::event(QEvent* pEvent)
{
    return QDialog::event(pEvent);
}

void COrmBasePalette::resizeEvent(QResizeEvent* pEvent)
{
    QDialog::resizeEvent(pEvent);
}

void COrmBasePalette::closeEvent(QCloseEvent* pEvent)
{
    QDialog::closeEvent(pEvent);
}

void COrmBasePalette::onDatasetChanged(COrmDataset* /*pDataset*/) {}

void COrmBasePalette::onSequenceChanged(COrmSequenceDataset* /*pSequence*/) {}

void COrmBasePalette::onDatasetRemoved(COrmDataset* /*pDataset*/) {}

void COrmBasePalette::onSequenceAdded(COrmSequenceDataset* /*pSequence*/) {}

void COrmBasePalette::onSequenceRemoved(COrmSequenceDataset* /*pSequence*/) {}

void COrmBasePalette::init() {}

void COrmBasePalette::onMouseClicked(const QPoint& /*ptClicked*/) {}

bool COrmBasePalette::readWellPlateQuantification(CPLResultXMLWrapper& wrapper, SAnalysisBase* pAnalysis)
{
    if (!pAnalysis)
    {
        return false;
    }
    pAnalysis->objQuantData = CWPQuantData();
    if (!wrapper.openSection(QStringLiteral("Orm3.0.WellPlate.Data"), QStringLiteral("Orm3.0.WellPlate.Quantification")))
    {
        return true;
    }
    CWPQuantData& objData = pAnalysis->objQuantData;
    const std::pair<const char*, QString*> lstFields[] = {{"Name", &objData.strName},
                                                          {"Date", &objData.strDate},
                                                          {"MeasurementType", &objData.strMeasurementType},
                                                          {"Probe", &objData.strProbe},
                                                          {"PlateType", &objData.strPlateType},
                                                          {"Unit", &objData.strUnit},
                                                          {"PerUnitValue", &objData.strPerUnitValue}};
    for (const auto& [pszKey, pstrValue] : lstFields)
    {
        QString strValue;
        if (wrapper.currentKeyText(QLatin1String(pszKey), strValue))
        {
            *pstrValue = strValue;
        }
    }
    return true;
}

bool COrmBasePalette::readMesh(CPLResultXMLWrapper& wrapper, SAnalysisBase* pAnalysis)
{
    return pAnalysis && pAnalysis->objMesh.loadFromXML(&wrapper);
}

bool COrmBasePalette::readVolumeData(CPLResultXMLWrapper& wrapper, SAnalysisBase* pAnalysis, QString& strKind)
{
    return pAnalysis && pAnalysis->objVolume.loadFromXML(&wrapper, strKind);
}

bool COrmBasePalette::readMask(CPLResultXMLWrapper& wrapper, SAnalysisBase* pAnalysis)
{
    if (!pAnalysis)
    {
        return false;
    }
    pAnalysis->imgMask = COrmImage();
    const QString strFirst = QStringLiteral("Orm3.0.Mask.Data");
    const QString strSecond = QStringLiteral("Orm3.0.Mask.Image");
    std::vector<int> vecSize;
    if (!wrapper.openSection(strFirst, strSecond) ||
        !wrapper.Read2ndTagKeyValues(strFirst, strSecond, {QStringLiteral("Width"), QStringLiteral("Height")}, vecSize))
    {
        return false;
    }
    if (vecSize[0] < 1 || vecSize[1] < 1)
    {
        ORM_LOG(1, QStringLiteral("The image mask has no size: %1 x %2.").arg(vecSize[0]).arg(vecSize[1]));
        return false;
    }
    QByteArray byPixels;
    if (!wrapper.readCurrentHexBytes(QStringLiteral("Orm3.0.Mask.Pixel"), 0, static_cast<qint64>(vecSize[0]) * vecSize[1], byPixels))
    {
        return false;
    }
    return pAnalysis->imgMask.initWithData(ORM_DATA_UINT8, vecSize[0], vecSize[1], byPixels.data());
}

bool COrmBasePalette::readVersionInformation(CPLResultXMLWrapper& wrapper, QString& strVersion)
{
    strVersion.clear();
    return wrapper.openSection(QStringLiteral("Orm3.0.Version.Data"), QStringLiteral("Orm3.0.Version")) &&
           wrapper.currentKeyText(QStringLiteral("Software"), strVersion) && !strVersion.isEmpty();
}

bool COrmBasePalette::readSourceMeshes(CPLResultXMLWrapper& /*wrapper*/, SAnalysisBase* /*pAnalysis*/)
{
    ORM_LOG(1, QStringLiteral("No source meshes were read: this host reads none."));
    return false;
}

bool COrmBasePalette::ReadRegisteredSurface(CPLResultXMLWrapper& /*wrapper*/, SAnalysisBase* /*pAnalysis*/)
{
    ORM_LOG(1, QStringLiteral("No registered surface was read: this host reads none."));
    return false;
}

void COrmBasePalette::setStatusHint(const QString& strHint)
{
    m_strStatusHint = strHint;
    if (!strHint.isEmpty())
    {
        ORM_LOG(1, strHint);
    }
    emit statusHintChanged(strHint);
}

void COrmBasePalette::cleanupStatusHint()
{
    setStatusHint(QString());
}

void COrmBasePalette::lockAskSavingResults(int nPermits)
{
    savePromptSemaphore().acquire(nPermits);
}

void COrmBasePalette::unlockAskSavingResults(int nPermits)
{
    savePromptSemaphore().release(nPermits);
}
