#include "RecordText.h"

#include "AnalysisRecords.h"
#include "SAnalysisBase.h"

#include <QCryptographicHash>

namespace
{
class CDigest
{
public:
    template <typename Array>
    void addArray(const Array& vecNumbers)
    {
        m_objHash.addData(reinterpret_cast<const char*>(vecNumbers.data()),
                          static_cast<int>(vecNumbers.size() * sizeof(typename Array::value_type)));
        add(QString::number(vecNumbers.size()));
    }
    void add(const QString& strText) { m_objHash.addData(strText.toUtf8() + '\n'); }
    void add(C3DMesh& objMesh)
    {
        addArray(objMesh.vertices());
        addArray(objMesh.triangles());
    }
    void add(C3DVolume& objVolume)
    {
        addArray(objVolume.positions());
        addArray(objVolume.values());
        add(QString::number(static_cast<double>(objVolume.getVoxelSize())));
    }
    QByteArray result() const { return m_objHash.result(); }

private:
    QCryptographicHash m_objHash{QCryptographicHash::Sha1};
};
} // namespace

QByteArray RecordText::digest(SAnalysisBase& objRecord)
{
    CDigest objDigest;
    objDigest.add(objRecord.strSequenceID);
    objDigest.add(objRecord.objMesh);
    objDigest.add(objRecord.objVolume);
    for (const auto* pRows : {&objRecord.vecSimulatedPhotonDensity, &objRecord.vecMeasuredPhotonDensity})
    {
        for (const std::vector<float>& vecRow : *pRows)
            objDigest.addArray(vecRow);
    }
    for (const QStringList& lst : {objRecord.lstResultKeys, objRecord.lstResultValues})
        objDigest.add(lst.join(QLatin1Char('|')));
    objDigest.add(objRecord.objQuantData.strMeasurementType);
    objDigest.add(objRecord.objQuantData.strPerUnitValue);
    return objDigest.result();
}

QByteArray RecordText::digest(sAnalysisBase& objRecord)
{
    CDigest objDigest;
    objDigest.add(objRecord.strSequenceID);
    objDigest.add(objRecord.strResultName);
    objDigest.add(objRecord.objMesh);
    objDigest.add(objRecord.objVolume);
    objDigest.add(objRecord.objRawVolume);
    objDigest.add(QStringLiteral("%1 %2 %3").arg(objRecord.dFinalVoxelSize).arg(objRecord.dStartingVoxelSize).arg(objRecord.dReducedChi2));
    return objDigest.result();
}
