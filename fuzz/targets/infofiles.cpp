// Sequence information, click information and the index of saved results, from the file to what the host and the tool ask of them.

#include "CompareSettings.h"
#include "FuzzTarget.h"
#include "SettingsGrammar.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const std::string strText = FuzzTarget::textOf(pData, nSize, SettingsGrammar::build);
    FuzzTarget::tookInput(CompareSettings::filesBothWays(strText));
    return 0;
}
