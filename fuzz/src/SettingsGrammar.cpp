#include "SettingsGrammar.h"

#include "FuzzInput.h"

#include <vector>

namespace
{
const std::vector<std::string> vecSections = {"Click Numbers",
                                              "Sequence Information",
                                              "luminescent image",
                                              "photographic image",
                                              "structure image",
                                              "reference image",
                                              "SOLA_1",
                                              "SOLA_2",
                                              "",
                                              "CT Acquisition Parameters",
                                              "other"};
const std::vector<std::string> vecKeys = {
    "Count",         "1",          "2",        "3",          "MenuName", "FileName", "Image Subtype", "FL x-spot", "FL y-spot",
    "Field of View", "Image File", "Sequence", "2147483647", "02",       "-1",       "4294967297",    "k"};
const std::vector<std::string> vecValues = {"2",
                                            "1",
                                            "3",
                                            "2147483647",
                                            "-1",
                                            "+3",
                                            "03",
                                            "3.0",
                                            "4294967296",
                                            "",
                                            "MH_001",
                                            "Day 0",
                                            "day 0",
                                            "SOLA_1.xml",
                                            "../SOLA_1.xml",
                                            "/etc/passwd",
                                            "a/../../b",
                                            "a/../b",
                                            "a/../../b/c",
                                            "../b/c/d",
                                            "C:\\x",
                                            "file:///x",
                                            "~/x",
                                            ".",
                                            "x/",
                                            "fluorescent",
                                            "1.25",
                                            "1.25;2.5",
                                            "nan",
                                            "1e400",
                                            "-2",
                                            "1,5",
                                            "a=b",
                                            "[x]",
                                            "# no remark",
                                            "\xEF\xBB\xBFx",
                                            "\xE9",
                                            "\xF0\x9F\x90\xAD",
                                            "@Variant(x)",
                                            "%n",
                                            "13.6"};
const std::vector<std::string> vecEnds = {"\n", "\n", "\r\n", "\r", "\n\n"};
const std::vector<std::string> vecBlanks = {"", "", " ", "\t", " \v\f"};
} // namespace

namespace SettingsGrammar
{
std::string build(const std::uint8_t* pData, std::size_t nSize)
{
    CFuzzInput objIn(pData, nSize);
    std::string strText = objIn.rarely(8) ? "\xEF\xBB\xBF" : "";
    while (objIn.left() > 0)
    {
        const auto blank = [&] { return objIn.rarely(4) ? objIn.oneOf(vecBlanks) : std::string(); };
        const int nHow = objIn.below(32);
        std::string strLine;
        if (nHow < 6)
            strLine = "[" + blank() + objIn.oneOf(vecSections) + blank() + "]" + (objIn.rarely(8) ? " # remark" : "");
        else if (nHow < 24)
            strLine = objIn.oneOf(vecKeys) + blank() + "=" + blank() + objIn.oneOf(vecValues);
        else if (nHow < 26)
            strLine = "# " + objIn.text(4);
        else if (nHow == 26 && objIn.rarely(4))
            strLine = objIn.oneOf(vecKeys) + "=" + std::string(65300U + objIn.byte(), 'v'); // around the longest line
        else if (nHow == 27)
            for (int n = 1 + objIn.below(200); n > 0; --n)
                strLine += std::to_string(n) + "=click" + vecEnds.front();
        else if (nHow == 28)
            strLine = "[SOLA_1]\nMenuName=" + objIn.oneOf(vecValues) + "\nFileName=" + objIn.oneOf(vecValues);
        else
            strLine = objIn.text(static_cast<std::size_t>(objIn.below(24)));
        strText += blank() + strLine + objIn.oneOf(vecEnds);
    }
    return strText;
}
} // namespace SettingsGrammar
