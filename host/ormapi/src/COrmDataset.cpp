#include "COrmDataset.h"

#include "COrmLog.h"

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

QString COrmDataset::getPhotographFile() const
{
    return OrmClickFacts::photographFile(m_sFacts);
}

QString COrmDataset::getLuminescentFile() const
{
    return OrmClickFacts::luminescentFile(m_sFacts);
}
