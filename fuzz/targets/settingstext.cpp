// The reader of settings text against one that searches plain lists.

#include "FuzzTarget.h"
#include "OrmSettingsText.h"
#include "PlainSettings.h"
#include "SettingsGrammar.h"

namespace
{
constexpr long long nAllowedMemory = 32LL * 1024 * 1024; ///< beyond what grows with the text

using FuzzTarget::demand;

std::string decoded(const std::string& strBytes)
{
    return QString::fromUtf8(strBytes.data(), static_cast<int>(strBytes.size())).toStdString();
}

void compareSection(const CPLSection& objRead, const PlainSettings::SSection& objPlain)
{
    demand(objRead.name().toStdString() == objPlain.m_strName, "section [" + objPlain.m_strName + "]");
    const QStringList lstKeys = objRead.keys();
    demand(lstKeys.size() == static_cast<int>(objPlain.m_vecKeys.size()) && objRead.keyCount() == lstKeys.size(),
           "the number of keys of [" + objPlain.m_strName + "]");
    for (int i = 0; i < lstKeys.size(); ++i)
    {
        const auto& [strKey, strValue] = objPlain.m_vecKeys[static_cast<std::size_t>(i)];
        demand(lstKeys.at(i).toStdString() == strKey, "key " + strKey);
        QString strRead;
        demand(objRead.contains(lstKeys.at(i)) && objRead.getValue(lstKeys.at(i), &strRead) == 0 && strRead.toStdString() == strValue,
               "value of " + strKey);
    }
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*pnArguments*/, char*** /*pppArguments*/)
{
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const bool bBuilt = nSize > 0 && pData[0] == FuzzTarget::nChoices;
    const std::string strText =
        bBuilt ? SettingsGrammar::build(pData + 1, nSize - 1) : std::string(reinterpret_cast<const char*>(pData), nSize);
    const PlainSettings::SText objPlain = PlainSettings::read(strText, decoded);
    OrmSettingsText objRead;
    bool bRead = false;
    {
        const CMemoryBound objBound(nAllowedMemory + 100LL * static_cast<long long>(strText.size()));
        bRead = objRead.parse(QByteArray(strText.data(), static_cast<int>(strText.size())), QStringLiteral("input"));
    }
    FuzzTarget::tookInput(bRead);
    demand(bRead == objPlain.m_bReadable,
           bRead ? "read, but should be refused" : "refused, but should be read: " + objRead.lastError().toStdString());
    demand(bRead == objRead.lastError().isEmpty(), "a refusal without a reason, or a reason without one");
    demand(objRead.sectionCount() == static_cast<int>(objPlain.m_vecSections.size()), "the number of sections");
    for (int i = 0; i < objRead.sectionCount(); ++i)
    {
        const PlainSettings::SSection& objSection = objPlain.m_vecSections[static_cast<std::size_t>(i)];
        compareSection(objRead.sectionAt(i), objSection);
        demand(objRead.section(objRead.sectionAt(i).name()) == &objRead.sectionAt(i), "section by name [" + objSection.m_strName + "]");
    }
    return 0;
}
