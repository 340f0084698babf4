#pragma once

#include "ExpectedLoad.h"
#include "SResultDocument.h"
#include "TestWidgets.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

/// Damaged result documents of both kinds, and what the host is asked for where they differ from a sound one.
namespace ReaderCases
{

using Mutation = std::function<void(SResultDocument&)>;

/// One damaged document and what comes of it.
struct SCase
{
    const char* pName;
    int nKind;
    const char* pVersion; ///< null: both format versions
    Mutation fnDamage;
    QString strAfter;    ///< the entry after which something differs
    QStringList lstThen; ///< what comes then
    enum EEnd
    {
        Continues,     ///< goes on as if nothing were
        Ends,          ///< the reader gives up
        RefusedUntold, ///< the reader goes on to its end, then the record is refused without a word
    } eEnd;
};

inline Mutation without(const QByteArray& byTag)
{
    return [byTag](SResultDocument& objDocument) { objDocument.leaveOut(byTag); };
}

inline Mutation replaced(const QByteArray& byOld, const QByteArray& byNew)
{
    return [byOld, byNew](SResultDocument& objDocument) { objDocument.replace(byOld, byNew); };
}

inline QString step(int nKind, const QString& strBegin)
{
    for (const QString& strEntry : ExpectedLoad::reading(nKind))
    {
        if (strEntry.startsWith(strBegin))
        {
            return strEntry;
        }
    }
    TestWidgets::fail("No step begins with " + strBegin);
}

inline QList<SCase> solaCases()
{
    const int k = SResultDocument::SOLA;
    const QString p1 = step(k, "progress 1/");
    const QString p2 = step(k, "progress 2/");
    const QString p4 = step(k, "progress 4/");
    const QString p5 = step(k, "progress 5/");
    const QString p7 = step(k, "progress 7/");
    const QString mesh = step(k, "log 1: Reading mesh");
    const QString map = step(k, "log 1: Reading height");
    const QString density = step(k, "log 1: Reading photon");
    const QString volume = step(k, "log 1: Reading source");
    const QString table = "hint: Reading results output...";
    const QByteArray sim = "Orm3.0.SOLA.Simulated.Photon.Density.";
    const QByteArray mea = "Orm3.0.SOLA.Measured.Photon.Density.";
    const QString badSim = "log 1: Unable to read simulated photon density information.";
    const QString badMea = "log 1: Unable to read measured photon density information.";
    const QString mismatchMea = "log 1: Data mismatch in number of wave lengths or number of vertices.";
    return {
        {"no XML", k, nullptr, replaced("</Ormelle.Result>", ""), p1, {"log 1: Unable to read analysis data."}, SCase::Ends},
        {"version 3.0",
         k,
         nullptr,
         replaced("Result Version=\"", "Result Version=\"3.0\" Was=\""),
         p2,
         {"log 1: Unable to read analysis data."},
         SCase::Ends},
        {"version with a blank behind",
         k,
         nullptr,
         [](SResultDocument& d) { d.strVersion += ' '; },
         p2,
         {"log 1: Unable to read analysis data."},
         SCase::Ends},
        {"no version", k, nullptr, replaced("Result Version=", "Result Was="), p2, {"log 1: Unable to read analysis data."}, SCase::Ends},
        {"no mesh, 1.0", k, "1.0", without("Orm3.0.Surface.Vertices"), mesh, {"log 1: Unable to read mesh information."}, SCase::Ends},
        {"no mesh, 2.0", k, "2.0", without("Orm3.0.Surface.Vertices"), mesh, {}, SCase::Ends},
        {"no sequence ID",
         k,
         nullptr,
         without("Orm3.0.SOLA.SequenceID"),
         mesh,
         {"log 1: Unable to read sequence ID."},
         SCase::RefusedUntold},
        {"no wavelengths",
         k,
         nullptr,
         without("Orm3.0.SOLA.Wavelengths"),
         mesh,
         {"log 1: Unable to read wavelength information.", map, p4, density, "log 1: Data mismatch in # of wavelengths"},
         SCase::Ends},
        {"wavelength count is no number",
         k,
         nullptr,
         replaced("Wavelengths Count=\"2\"", "Wavelengths Count=\"two\""),
         mesh,
         {"log 1: Unable to read wavelength information.", map, p4, density, "log 1: Data mismatch in # of wavelengths"},
         SCase::Ends},
        {"fewer wavelengths than counted",
         k,
         nullptr,
         replaced("Wavelengths Count=\"2\"", "Wavelengths Count=\"3\""),
         mesh,
         {"log 1: Unable to read wavelength information."},
         SCase::Ends},
        {"fewer wavelengths than views",
         k,
         nullptr,
         [](SResultDocument& d) { d.nViews = 2147483647; },
         mesh,
         {"log 1: Unable to read wavelength information."},
         SCase::Ends},
        {"no clicks",
         k,
         nullptr,
         without("Orm3.0.SOLA.ClickNumber"),
         mesh,
         {"log 1: Unable to read image number information"},
         SCase::Continues},
        {"fewer clicks than counted",
         k,
         nullptr,
         replaced("ClickNumber Count=\"5\"", "ClickNumber Count=\"7\""),
         mesh,
         {"log 1: Unable to get image number information."},
         SCase::Ends},
        {"no height map",
         k,
         nullptr,
         without("Orm3.0.SOLA.HeightMap.Data"),
         map,
         {"log 1: Height map image is not present in the SOLA result XML file"},
         SCase::Continues},
        {"height map of width 0", k, nullptr, [](SResultDocument& d) { d.nMapWidth = 0; }, map, {}, SCase::Continues},
        {"height map of negative size", k, nullptr, replaced("Width=\"4\"", "Width=\"-4\""), map, {}, SCase::Continues},
        {"height map too short",
         k,
         nullptr,
         replaced("Width=\"4\"", "Width=\"5\""),
         map,
         {"log 1: Unable to read height map image."},
         SCase::Ends},
        {"height map of sizes that wrap",
         k,
         nullptr,
         replaced("Width=\"4\" Height=\"3\"", "Width=\"65536\" Height=\"65536\""),
         map,
         {"log 1: Unable to read height map image."},
         SCase::Ends},
        {"height map of two negative sizes that its text fills",
         k,
         nullptr,
         replaced("Width=\"4\" Height=\"3\"", "Width=\"-4\" Height=\"-3\""),
         map,
         {},
         SCase::Continues},
        {"height map of two negative sizes",
         k,
         nullptr,
         replaced("Width=\"4\" Height=\"3\"", "Width=\"-40\" Height=\"-30\""),
         map,
         {"log 1: Unable to read height map image."},
         SCase::Ends},
        {"height map with a bad digit",
         k,
         nullptr,
         replaced("Pixel><Text.Data>0", "Pixel><Text.Data>g"),
         map,
         {"log 1: Unable to read height map image."},
         SCase::Ends},
        {"no simulated densities",
         k,
         nullptr,
         without(sim + "Data"),
         density,
         {badSim, "log 1: Data mismatch in # of wavelengths"},
         SCase::Ends},
        {"no simulated densities, sizes of the height map agree",
         k,
         nullptr,
         [sim](SResultDocument& d)
         {
             d.nMapWidth = 2;
             d.leaveOut(sim + "Data");
         },
         density,
         {badSim, badSim},
         SCase::Ends},
        {"simulated densities of one wavelength too many",
         k,
         nullptr,
         replaced("Simulated.Photon.Density.Data Total.WaveLengths=\"2\"", "Simulated.Photon.Density.Data Total.WaveLengths=\"3\""),
         density,
         {"log 1: Data mismatch in # of wavelengths"},
         SCase::Ends},
        {"simulated densities claim too many vertices",
         k,
         nullptr,
         replaced("Simulated.Photon.Density.Data Total.WaveLengths=\"2\" Total.Vertices=\"66\"",
                  "Simulated.Photon.Density.Data Total.WaveLengths=\"2\" Total.Vertices=\"2000000000\""),
         density,
         {badSim},
         SCase::Ends},
        {"simulated densities of no vertices",
         k,
         nullptr,
         [](SResultDocument& d)
         {
             d.vecSimulated = {{}, {}};
             d.vecMeasured = {{}, {}};
         },
         QString(),
         {},
         SCase::RefusedUntold},
        {"a simulated value is no number",
         k,
         "1.0",
         replaced("Photon.Density=\"165\"", "Photon.Density=\"nan\""),
         density,
         {badSim},
         SCase::Ends},
        {"a simulated row has a bad digit",
         k,
         "2.0",
         replaced("Simulated.Photon.Density.Values><Text.Data>0", "Simulated.Photon.Density.Values><Text.Data>x"),
         density,
         {badSim},
         SCase::Ends},
        {"no measured densities, sizes of the simulated ones stay",
         k,
         nullptr,
         without(mea + "Data"),
         p5,
         {badMea, "?10 " + badMea, "?20 " + badSim},
         SCase::Ends},
        {"measured densities of one wavelength too few",
         k,
         nullptr,
         replaced("Measured.Photon.Density.Data Total.WaveLengths=\"2\"", "Measured.Photon.Density.Data Total.WaveLengths=\"1\""),
         p5,
         {mismatchMea},
         SCase::Ends},
        {"measured densities of fewer vertices",
         k,
         nullptr,
         replaced("Measured.Photon.Density.Data Total.WaveLengths=\"2\" Total.Vertices=\"66\"",
                  "Measured.Photon.Density.Data Total.WaveLengths=\"2\" Total.Vertices=\"65\""),
         p5,
         {mismatchMea},
         SCase::Ends},
        {"a measured value is no number", k, "1.0", replaced("Photon.Density=\"1065\"", "Photon.Density=\"\""), p5, {badMea}, SCase::Ends},
        {"a measured row is cut off", k, "2.0", [](SResultDocument& d) { d.vecMeasured[1].pop_back(); }, p5, {badSim}, SCase::Ends},
        {"no volume", k, nullptr, without("Orm3.0.Volume.Voxels"), volume, {"log 1: Unable to read source volume data."}, SCase::Ends},
        {"volume of the other kind",
         k,
         nullptr,
         replaced("Kind=\"SOLA\"", "Kind=\"NOVA\""),
         volume,
         {"log 1: Unable to read source volume data."},
         SCase::Ends},
        {"no mask", k, nullptr, [](SResultDocument& d) { d.bMask = false; }, QString(), {}, SCase::Continues},
        {"no registration matrices",
         k,
         nullptr,
         [](SResultDocument& d) { d.bRegistration = false; },
         volume,
         {"log 1: Registration matrices are not present in the  result XML file."},
         SCase::Continues},
        {"no results table", k, nullptr, without("Orm3.0.SOLA.Results"), table, {"log 1: Unable to read results output."}, SCase::Ends},
        {"fewer rows than counted",
         k,
         nullptr,
         replaced("Results Count=\"4\"", "Results Count=\"5\""),
         table,
         {"hint: Unable to read analysis results output."},
         SCase::Ends},
        {"rows written like their block",
         k,
         nullptr,
         replaced("Orm.3.0.SOLA.Results", "Orm3.0.SOLA.Results"),
         table,
         {"hint: Unable to read analysis results output."},
         SCase::Ends},
        {"of another sequence", k, nullptr, [](SResultDocument& d) { d.strSequenceID = "SEQ2"; }, QString(), {}, SCase::RefusedUntold},
        {"densities that don't fit the mesh",
         k,
         nullptr,
         [](SResultDocument& d)
         {
             for (auto* pRows : {&d.vecSimulated, &d.vecMeasured})
             {
                 for (std::vector<float>& vecRow : *pRows)
                 {
                     vecRow.pop_back();
                 }
             }
         },
         QString(),
         {},
         SCase::RefusedUntold},
    };
}

inline QList<SCase> novaCases()
{
    const int k = SResultDocument::NOVA;
    const QString p1 = step(k, "progress 1/");
    const QString p2 = step(k, "progress 2/");
    const QString p4 = step(k, "progress 4/");
    const QString p5 = step(k, "progress 5/");
    const QString mesh = "hint: Reading mesh surface...";
    const QString map = "hint: Reading height map image...";
    const QString density = "hint: Reading photon density maps...";
    const QString volume = "hint: Reading source volume...";
    const QString table = "hint: Reading results output...";
    const QByteArray sim = "Orm3.0.NOVA.Simulated.Photon.Density.";
    const QByteArray mea = "Orm3.0.NOVA.Measured.Photon.Density.";
    const QString badSim = "hint: Unable to read simulated photon density information.";
    const QString badMea = "hint: Unable to read measured photon density information.";
    const QString noHeaderSim = "log 1: Unable to read simulated photon density information.";
    const QString noHeaderMea = "log 1: Unable to read measured photon density information.";
    const QString mismatchSim = "hint: Data mismatch in no. of wavelengths";
    const QString mismatchMea = "hint: Data mismatch in number of wave lengths or number of vertices.";
    const QString badSource = "hint: Unable to read image source information.";
    return {
        {"no XML", k, nullptr, replaced("</Ormelle.Result>", ""), p1, {"hint: Unable to read analysis data."}, SCase::Ends},
        {"version 3.0",
         k,
         nullptr,
         replaced("Result Version=\"", "Result Version=\"3.0\" Was=\""),
         p2,
         {"hint: Unable to read analysis data."},
         SCase::Ends},
        {"version with a blank behind",
         k,
         nullptr,
         [](SResultDocument& d) { d.strVersion += ' '; },
         p2,
         {"hint: Unable to read analysis data."},
         SCase::Ends},
        {"no mesh, 1.0", k, "1.0", without("Orm3.0.Surface.Triangles"), mesh, {"hint: Unable to read mesh information."}, SCase::Ends},
        {"no mesh, 2.0", k, "2.0", without("Orm3.0.Surface.Triangles"), mesh, {}, SCase::Ends},
        {"no sequence ID",
         k,
         nullptr,
         without("Orm3.0.NOVA.SequenceID"),
         mesh,
         {"log 1: Unable to read sequence ID."},
         SCase::RefusedUntold},
        {"no image sources",
         k,
         nullptr,
         without("Orm3.0.NOVA.Imagesource"),
         mesh,
         {"log 1: Unable to read Image Source information.", map, p4, density, mismatchSim},
         SCase::Ends},
        {"fewer image sources than counted",
         k,
         nullptr,
         replaced("Imagesource Count=\"2\"", "Imagesource Count=\"3\""),
         mesh,
         {"hint: Unable to read Image Source information."},
         SCase::Ends},
        {"no emission filters",
         k,
         nullptr,
         without("Orm3.0.NOVA.EmmissionFilter"),
         mesh,
         {"log 1: Unable to read image emission filter information."},
         SCase::Continues},
        {"emission written with one m",
         k,
         nullptr,
         replaced("Orm3.0.NOVA.EmmissionFilter", "Orm3.0.NOVA.EmissionFilter"),
         mesh,
         {"log 1: Unable to read image emission filter information."},
         SCase::Continues},
        {"fewer emission filters than counted",
         k,
         nullptr,
         replaced("EmmissionFilter Count=\"2\"", "EmmissionFilter Count=\"3\""),
         mesh,
         {badSource},
         SCase::Ends},
        {"no excitation filters",
         k,
         nullptr,
         without("Orm3.0.NOVA.ExcitationFilter"),
         mesh,
         {"log 1: Unable to read image excitation filter information."},
         SCase::Continues},
        {"fewer excitation filters than counted",
         k,
         nullptr,
         replaced("ExcitationFilter Count=\"2\"", "ExcitationFilter Count=\"3\""),
         mesh,
         {badSource},
         SCase::Ends},
        {"no clicks",
         k,
         nullptr,
         without("Orm3.0.NOVA.ClickNumber"),
         mesh,
         {"log 1: Unable to read image number information"},
         SCase::Continues},
        {"fewer clicks than counted",
         k,
         nullptr,
         replaced("ClickNumber Count=\"5\"", "ClickNumber Count=\"7\""),
         mesh,
         {"hint: Unable to get image number information."},
         SCase::Ends},
        {"no optical properties",
         k,
         nullptr,
         without("Orm3.0.NOVA.Optical.Properties"),
         mesh,
         {"log 1: Unable to read optical properties."},
         SCase::Continues},
        {"no height map",
         k,
         nullptr,
         without("Orm3.0.NOVA.HeightMap.Data"),
         map,
         {"log 1: Height map image is not present in the Analysis result XML file"},
         SCase::Continues},
        {"height map of height 0", k, nullptr, [](SResultDocument& d) { d.nMapHeight = 0; }, map, {}, SCase::Continues},
        {"height map too short",
         k,
         nullptr,
         replaced("Height=\"3\"", "Height=\"4\""),
         map,
         {"hint: Unable to read height map image."},
         SCase::Ends},
        {"no simulated densities", k, nullptr, without(sim + "Data"), density, {noHeaderSim, mismatchSim}, SCase::Ends},
        {"no simulated densities, sizes of the height map agree",
         k,
         nullptr,
         [sim](SResultDocument& d)
         {
             d.nMapWidth = 2;
             d.leaveOut(sim + "Data");
         },
         density,
         {noHeaderSim, badSim},
         SCase::Ends},
        {"simulated densities of one source too many",
         k,
         nullptr,
         replaced("Simulated.Photon.Density.Data Total.ImageSource=\"2\"", "Simulated.Photon.Density.Data Total.ImageSource=\"3\""),
         density,
         {mismatchSim},
         SCase::Ends},
        {"a simulated value is no number",
         k,
         "1.0",
         replaced("Photon.Density=\"165\"", "Photon.Density=\"1,5\""),
         density,
         {badSim},
         SCase::Ends},
        {"a simulated row is missing",
         k,
         "2.0",
         [](SResultDocument& d) { d.replace("NOVA.Simulated.Photon.Density.Values", "NOVA.Simulated.Photon.Density.Other"); },
         density,
         {badSim},
         SCase::Ends},
        {"no measured densities, sizes of the simulated ones stay",
         k,
         nullptr,
         without(mea + "Data"),
         p5,
         {noHeaderMea, "?10 " + badMea, "?20 " + badSim},
         SCase::Ends},
        {"measured densities of one source too few",
         k,
         nullptr,
         replaced("Measured.Photon.Density.Data Total.ImageSource=\"2\"", "Measured.Photon.Density.Data Total.ImageSource=\"1\""),
         p5,
         {mismatchMea},
         SCase::Ends},
        {"measured densities of other vertices",
         k,
         nullptr,
         replaced("Measured.Photon.Density.Data Total.ImageSource=\"2\" Total.Vertices=\"66\"",
                  "Measured.Photon.Density.Data Total.ImageSource=\"2\" Total.Vertices=\"67\""),
         p5,
         {mismatchMea},
         SCase::Ends},
        {"a measured value is no number",
         k,
         "1.0",
         replaced("Photon.Density=\"1065\"", "Photon.Density=\"inf\""),
         p5,
         {badMea},
         SCase::Ends},
        {"a measured row is cut off", k, "2.0", [](SResultDocument& d) { d.vecMeasured[1].pop_back(); }, p5, {badSim}, SCase::Ends},
        {"no volume", k, nullptr, without("Orm3.0.Volume.Voxels"), volume, {"hint: Unable to read source volume data."}, SCase::Ends},
        {"no results table",
         k,
         nullptr,
         without("Orm3.0.NOVA.Results"),
         table,
         {"log 1: Unable to read NOVA results output."},
         SCase::Continues},
        {"fewer rows than counted",
         k,
         nullptr,
         replaced("Results Count=\"4\"", "Results Count=\"5\""),
         table,
         {"hint: Unable to read NOVA results output."},
         SCase::Ends},
        {"of another sequence", k, nullptr, [](SResultDocument& d) { d.strSequenceID = "SEQ1 "; }, QString(), {}, SCase::RefusedUntold},
    };
}

inline QList<SCase> allCases()
{
    return solaCases() + novaCases();
}

} // namespace ReaderCases
