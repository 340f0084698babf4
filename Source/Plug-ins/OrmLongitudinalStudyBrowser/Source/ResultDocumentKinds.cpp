#include "ResultDocumentKinds.h"

// The two tables stand side by side so that every difference can be seen at a glance. Many of them look like slips of the
// pen: the case of a word, a missing point, a message that names the simulated densities while measured ones are read, a
// hint where the other kind writes to the log. Files, logs and users have lived with them for long; none is to be smoothed.

namespace ResultDocument
{

namespace
{

constexpr SMessage log(const char* pText)
{
    return {EChannel::Log, pText};
}

constexpr SMessage hint(const char* pText)
{
    return {EChannel::Hint, pText};
}

SKind makeSola()
{
    SKind k;
    k.pName = "SOLA";
    k.pFirstTag = "Orm3.0.SOLA.Data";

    k.pProgressFile = "Loading SOLA Analysis: Reading XML file...";
    k.objNoDocument = log("Unable to read analysis data.");

    k.pProgressUnit = "Loading SOLA Analysis: Loading well plate quantification parameters...";
    k.pUnitMismatch = "The SOLA result Measurement Type '%1' is not compatible with the Selected Unit '%2'.";

    k.pProgressMesh = "Loading SOLA analysis: Reading mesh surface...";
    k.objReadingMesh = log("Reading mesh surface...");
    k.objNoMesh10 = log("Unable to read mesh information.");

    k.pSequenceBlock = "Orm3.0.SOLA.SequenceID";
    k.pSequenceEntry = "Orm3.0.SOLA.SequenceID.Name";
    k.objNoSequence = log("Unable to read sequence ID.");

    k.objNames.pBlock = "Orm3.0.SOLA.Wavelengths";
    k.objNames.pEntry = "Orm3.0.SOLA.Wavelength.Name";
    k.objNames.pKey = "Wavelength";
    k.objNames.objNoCount = log("Unable to read wavelength information.");
    k.objNames.objNoEntry = log("Unable to read wavelength information.");
    k.bNamesHaveViews = true;

    k.objClicks.pBlock = "Orm3.0.SOLA.ClickNumber";
    k.objClicks.pEntry = "Orm3.0.SOLA.ClickNumber.Name";
    k.objClicks.pKey = "ClickNumber";
    k.objClicks.objNoCount = log("Unable to read image number information");
    k.objClicks.objNoEntry = log("Unable to get image number information.");
    k.objClicks.nStride = 2; // only every second click is kept
    k.objClicks.pField = &SAnalysisBase::lstClickNumbers;

    k.objReadingHeightMap = log("Reading height map image...");
    k.pHeightMapBlock = "Orm3.0.SOLA.HeightMap.Data";
    k.pHeightMapEntry = "Orm3.0.SOLA.HeightMap.Pixel";
    k.objNoHeightMap = log("Height map image is not present in the SOLA result XML file");
    k.objBadHeightMap = log("Unable to read height map image.");

    k.pProgressDensity = "Loading SOLA analysis: Reading photon density maps...";
    k.objReadingDensity = log("Reading photon density maps...");
    k.pDensityCountKey = "Total.WaveLengths";
    k.objSimulated.pBlock = "Orm3.0.SOLA.Simulated.Photon.Density.Data";
    k.objSimulated.pValue = "Orm3.0.SOLA.Simulated.Photon.Density.Value";
    k.objSimulated.pValues = "Orm3.0.SOLA.Simulated.Photon.Density.Values";
    k.objSimulated.objNoHeader = log("Unable to read simulated photon density information.");
    k.objSimulated.objMismatch = log("Data mismatch in # of wavelengths");
    k.objSimulated.objNoMemory10 = log("Unable to allocate memory for simulated photon density maps.");
    k.objSimulated.objNoValue10 = log("Unable to read simulated photon density information.");
    k.objSimulated.objNoMemory20 = log("Unable to allocate memory for simulated photon density maps.");
    k.objSimulated.objNoValue20 = log("Unable to read simulated photon density information.");

    k.pProgressMeasured = "Loading %1 analysis: reading measured photon densities...";
    k.objMeasured.pBlock = "Orm3.0.SOLA.Measured.Photon.Density.Data";
    k.objMeasured.pValue = "Orm3.0.SOLA.Measured.Photon.Density.Value";
    k.objMeasured.pValues = "Orm3.0.SOLA.Measured.Photon.Density.Values";
    k.objMeasured.objNoHeader = log("Unable to read measured photon density information.");
    k.objMeasured.objMismatch = log("Data mismatch in number of wave lengths or number of vertices.");
    k.objMeasured.objNoMemory10 = log("Unable to allocate memory for measured photon density maps.");
    k.objMeasured.objNoValue10 = log("Unable to read measured photon density information.");
    k.objMeasured.objNoMemory20 = log("Unable to allocate memory for simulated photon density maps.");
    k.objMeasured.objNoValue20 = log("Unable to read simulated photon density information.");

    k.pProgressVolume = "Loading SOLA analysis: Reading source volume...";
    k.objReadingVolume = log("Reading source volume...");
    k.objNoVolume = log("Unable to read source volume data.");

    k.bMaskAndRegistration = true;
    k.objNoRegistration = log("Registration matrices are not present in the %1 result XML file.");

    k.pProgressDisplay = "Loading %1 analysis: Displaying read data...";
    k.pProgressResults = "Loading %1 analysis: Reading results...";
    k.objReadingResults = hint("Reading results output...");
    k.pResultsBlock = "Orm3.0.SOLA.Results";
    k.pResultsEntry = "Orm.3.0.SOLA.Results";
    k.bResultsRequired = true;
    k.objNoResults = log("Unable to read results output.");
    k.objBadResultsRow = hint("Unable to read analysis results output.");
    k.pDroppedKey = "Total source flux";
    return k;
}

SKind makeNova()
{
    SKind k;
    k.nKind = 1;
    k.pName = "NOVA";
    k.pFirstTag = "Orm3.0.NOVA.Data";

    k.pProgressFile = "Loading NOVA Analysis: Reading XML file...";
    k.objNoDocument = hint("Unable to read analysis data.");

    k.pProgressUnit = "Loading NOVA Analysis: Loading well plate quantification parameters...";
    k.pUnitMismatch = "The NOVA result Measurement Type '%1' is not compatible with the Selected Unit '%2'.";

    k.pProgressMesh = "Loading NOVA Analysis: reading mesh surface...";
    k.objReadingMesh = hint("Reading mesh surface...");
    k.objNoMesh10 = hint("Unable to read mesh information.");

    k.pSequenceBlock = "Orm3.0.NOVA.SequenceID";
    k.pSequenceEntry = "Orm3.0.NOVA.SequenceID.Name";
    k.objNoSequence = log("Unable to read sequence ID.");

    k.objNames.pBlock = "Orm3.0.NOVA.Imagesource";
    k.objNames.pEntry = "Orm3.0.NOVA.Imagesource.Name";
    k.objNames.pKey = "ImgSources";
    k.objNames.objNoCount = log("Unable to read Image Source information.");
    k.objNames.objNoEntry = hint("Unable to read Image Source information.");

    k.lstFilters[0].pBlock = "Orm3.0.NOVA.EmmissionFilter";
    k.lstFilters[0].pEntry = "Orm3.0.NOVA.EmmissionFilter.Name";
    k.lstFilters[0].pKey = "EMFilter";
    k.lstFilters[0].objNoCount = log("Unable to read image emission filter information.");
    k.lstFilters[0].objNoEntry = hint("Unable to read image source information.");
    k.lstFilters[0].pField = &SAnalysisBase::lstEmissionFilters;

    k.lstFilters[1].pBlock = "Orm3.0.NOVA.ExcitationFilter";
    k.lstFilters[1].pEntry = "Orm3.0.NOVA.ExcitationFilter.Name";
    k.lstFilters[1].pKey = "EXFilter";
    k.lstFilters[1].objNoCount = log("Unable to read image excitation filter information.");
    k.lstFilters[1].objNoEntry = hint("Unable to read image source information.");
    k.lstFilters[1].pField = &SAnalysisBase::lstExcitationFilters;

    k.objClicks.pBlock = "Orm3.0.NOVA.ClickNumber";
    k.objClicks.pEntry = "Orm3.0.NOVA.ClickNumber.Name";
    k.objClicks.pKey = "ClickNumber";
    k.objClicks.objNoCount = log("Unable to read image number information");
    k.objClicks.objNoEntry = hint("Unable to get image number information.");
    k.objClicks.nStride = 2; // only every second click is kept
    k.objClicks.pField = &SAnalysisBase::lstClickNumbers;

    k.pOpticalBlock = "Orm3.0.NOVA.Optical.Properties";
    k.pOpticalEntry = "Orm3.0.NOVA.Optical.Properties.Data";
    k.objNoOptical = log("Unable to read optical properties.");

    k.objReadingHeightMap = hint("Reading height map image...");
    k.pHeightMapBlock = "Orm3.0.NOVA.HeightMap.Data";
    k.pHeightMapEntry = "Orm3.0.NOVA.HeightMap.Pixel";
    k.objNoHeightMap = log("Height map image is not present in the Analysis result XML file");
    k.objBadHeightMap = hint("Unable to read height map image.");

    k.pProgressDensity = "Loading Analysis: Reading photon density maps...";
    k.objReadingDensity = hint("Reading photon density maps...");
    k.pDensityCountKey = "Total.ImageSource";
    k.objSimulated.pBlock = "Orm3.0.NOVA.Simulated.Photon.Density.Data";
    k.objSimulated.pValue = "Orm3.0.NOVA.Simulated.Photon.Density.Value";
    k.objSimulated.pValues = "Orm3.0.NOVA.Simulated.Photon.Density.Values";
    k.objSimulated.objNoHeader = log("Unable to read simulated photon density information.");
    k.objSimulated.objMismatch = hint("Data mismatch in no. of wavelengths");
    k.objSimulated.objNoMemory10 = hint("Unable to allocate memory for simulated photon density maps.");
    k.objSimulated.objNoValue10 = hint("Unable to read simulated photon density information.");
    k.objSimulated.objNoMemory20 = hint("Unable to allocate memory for simulated photon density maps.");
    k.objSimulated.objNoValue20 = hint("Unable to read simulated photon density information.");

    k.pProgressMeasured = "Loading Analysis: Reading measured photon densities...";
    k.objMeasured.pBlock = "Orm3.0.NOVA.Measured.Photon.Density.Data";
    k.objMeasured.pValue = "Orm3.0.NOVA.Measured.Photon.Density.Value";
    k.objMeasured.pValues = "Orm3.0.NOVA.Measured.Photon.Density.Values";
    k.objMeasured.objNoHeader = log("Unable to read measured photon density information.");
    k.objMeasured.objMismatch = hint("Data mismatch in number of wave lengths or number of vertices.");
    k.objMeasured.objNoMemory10 = hint("Unable to allocate memory for measured photon density maps.");
    k.objMeasured.objNoValue10 = hint("Unable to read measured photon density information.");
    k.objMeasured.objNoMemory20 = hint("Unable to allocate memory for simulated photon density maps.");
    k.objMeasured.objNoValue20 = hint("Unable to read simulated photon density information.");

    k.pProgressVolume = "Loading NOVA Analysis: Reading source volume...";
    k.objReadingVolume = hint("Reading source volume...");
    k.objNoVolume = hint("Unable to read source volume data.");

    k.pProgressResults = "Loading NOVA Analysis: Reading results...";
    k.objReadingResults = hint("Reading results output...");
    k.pResultsBlock = "Orm3.0.NOVA.Results";
    k.pResultsEntry = "Orm.3.0.NOVA.Results";
    k.objNoResults = log("Unable to read NOVA results output.");
    k.objBadResultsRow = hint("Unable to read NOVA results output.");
    k.pDroppedKey = "Total fluorescence yield";
    k.bVersionRow = true;
    return k;
}

} // namespace

const SKind& sola()
{
    static const SKind s_objKind = makeSola();
    return s_objKind;
}

const SKind& nova()
{
    static const SKind s_objKind = makeNova();
    return s_objKind;
}

} // namespace ResultDocument
