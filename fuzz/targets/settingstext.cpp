// The reader of settings text against one that searches plain lists.

#include "CompareSettings.h"
#include "FuzzTarget.h"
#include "SettingsGrammar.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const std::string strText = FuzzTarget::textOf(pData, nSize, SettingsGrammar::build);
    FuzzTarget::tookInput(CompareSettings::textBothWays(strText));
    return 0;
}
