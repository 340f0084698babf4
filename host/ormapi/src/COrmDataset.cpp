#include "COrmDataset.h"

#include "COrmLog.h"

#include <QDir>
#include <QFileInfo>

COrmDataset::COrmDataset(const SClickFacts& sFacts, QObject* pParent) : QObject(pParent), m_sFacts(sFacts) {}

COrmDataset::~COrmDataset() = default;

void COrmDataset::setFacts(const SClickFacts& sFacts)
{
    m_sFacts = sFacts;
}

void COrmDataset::calculateFOV()
{
    const double fFOV = OrmClickFacts::fieldOfView(m_sFacts);
    m_fImageFOV = fFOV > 0.0 ? fFOV : s_fDefaultFOV;
    if (fFOV <= 0.0)
        ORM_LOG(1, QStringLiteral("Click %1 gives no field of view: %2 cm is taken.").arg(m_sFacts.m_strClickNumber).arg(s_fDefaultFOV));
}

QString COrmDataset::insideFolder(const QString& strFile) const
{
    if (strFile.isEmpty() || m_sFacts.m_strFolder.isEmpty())
        return {};
    // Both paths are compared with their links resolved, so that neither ".." nor a link leads out of the click's folder.
    const QString strFolder = QFileInfo(m_sFacts.m_strFolder).canonicalFilePath();
    const QString strPath = QFileInfo(QDir(strFolder), strFile).canonicalFilePath();
    if (strFolder.isEmpty() || !strPath.startsWith(strFolder + QLatin1Char('/')) || !QFileInfo(strPath).isFile())
        return {};
    return strPath;
}

QString COrmDataset::getPhotographFile() const
{
    return insideFolder(m_sFacts.m_strPhotographicImageFile);
}

QString COrmDataset::getLuminescentFile() const
{
    return insideFolder(m_sFacts.m_strLuminescentImageFile);
}
