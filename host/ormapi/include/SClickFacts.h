#pragma once

#include <QString>

class CPLClickInfo;

/// What the host keeps of one click information file. Plain values, so that it can be filled on any thread.
struct SClickFacts
{
    QString m_strClickNumber;           ///< the click's name, which is the name of its folder
    QString m_strFolder;                ///< absolute folder of the click, with its closing separator
    bool m_bPhotographic = false;       ///< has the section "photographic image"
    bool m_bStructure = false;          ///< has the section "structure image"
    bool m_bReference = false;          ///< has the section "reference image"
    bool m_bLuminescent = false;        ///< has the section "luminescent image"
    QString m_strImageSubtype;          ///< "Image Subtype" of the luminescent image; null: not given
    QString m_strSpotX;                 ///< "FL x-spot" in cm, several separated by ';'; null: not given
    QString m_strSpotY;                 ///< "FL y-spot" in cm, likewise
    QString m_strLuminescentFOV;        ///< "Field of View" of the luminescent image, in cm; null: not given
    QString m_strPhotographicFOV;       ///< "Field of View" of the photographic image, in cm; null: not given
    QString m_strPhotographicImageFile; ///< "Image File" of the photographic image, relative to the folder
    QString m_strLuminescentImageFile;  ///< "Image File" of the luminescent image, relative to the folder
    QString m_strEmissionFilter;        ///< "Emission Filter" of the luminescent image, in nm; null: not given
    QString m_strExcitationFilter;      ///< "Excitation Filter" of the luminescent image, in nm; null: not given
    QString m_strExposureTime;          ///< "Exposure Time" of the luminescent image, in s; null: not given

    bool operator==(const SClickFacts& other) const;
    bool operator!=(const SClickFacts& other) const { return !(*this == other); }
};

namespace OrmClickFacts
{
/// The facts of a click information file that was loaded; number and folder are left empty.
SClickFacts fromClickInfo(const CPLClickInfo& objInfo);
/// Sections "structure image", "reference image" and "photographic image" are all there.
bool hasStructuredLight(const SClickFacts& sClick);
/// A "luminescent image" whose subtype is "fluorescent", ignoring case.
bool isFluorescent(const SClickFacts& sClick);
/// A "luminescent image" with another subtype or none.
bool isLuminescent(const SClickFacts& sClick);
/// A "luminescent image" with exactly one spot, both coordinates of which are above 0.
bool hasSingleSpot(const SClickFacts& sClick);
/// Field of view in cm: the luminescent image's, else the photographic image's; 0 if neither is a finite number above 0.
double fieldOfView(const SClickFacts& sClick);
/// Absolute path of the photograph that the click names, if it lies inside the click's folder; otherwise null. Looks at the disk.
QString photographFile(const SClickFacts& sClick);
/// The same for the luminescent image.
QString luminescentFile(const SClickFacts& sClick);
} // namespace OrmClickFacts
