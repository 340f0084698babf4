// Sequence information, click information and the index of saved results, from the file to what the host and the tool ask of them.

#include "CompareSettings.h"
#include "FuzzTarget.h"
#include "SettingsGrammar.h"

extern "C" int LLVMFuzzerInitialize(int* /*pnArguments*/, char*** /*pppArguments*/)
{
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const bool bBuilt = nSize > 0 && pData[0] == FuzzTarget::nChoices;
    const std::string strText =
        bBuilt ? SettingsGrammar::build(pData + 1, nSize - 1) : std::string(reinterpret_cast<const char*>(pData), nSize);
    FuzzTarget::tookInput(CompareSettings::filesBothWays(strText));
    return 0;
}
