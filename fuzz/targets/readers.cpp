// Both readers of saved results, from the file to the filled record, against the plain second reader.

#include "CompareResult.h"
#include "DocumentGrammar.h"
#include "FuzzTarget.h"

#include <QApplication>

extern "C" int LLVMFuzzerInitialize(int* pnArguments, char*** pppArguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the palette is a window, which is never shown
    new QApplication(*pnArguments, *pppArguments);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    if (FuzzTarget::isChoices(pData, nSize))
    {
        const DocumentGrammar::SBuilt objBuilt = DocumentGrammar::build(pData + 1, nSize - 1);
        FuzzTarget::tookInput(CompareResult::readBothWays(objBuilt.m_strText, objBuilt.m_bNova, objBuilt.m_strUnit));
        return 0;
    }
    const std::string strDocument(reinterpret_cast<const char*>(pData), nSize);
    FuzzTarget::tookInput(CompareResult::readBothWays(strDocument, false, "photons/sec"));
    FuzzTarget::tookInput(CompareResult::readBothWays(strDocument, true, "uncalibrated"));
    return 0;
}
