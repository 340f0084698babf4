#pragma once

#include "C3DObject.h"
#include "COrmPalette.h"
#include "SVoxelArrays.h"

#include <QSharedDataPointer>
#include <QVector>

#include <memory>

class CGLDrawScope;
class CHighestLook;
class CPLResultXMLWrapper;
class CTranslucentLook;
class CVolumeMarks;
class CVoxelBlock;

/// A cloud of cubic voxels on a regular grid that draws itself in the colours of its palette, and names its voxels for selection.
/// Copies share voxels and everything made of them until one of them is loaded anew. Values are amounts per voxel.
class C3DVolume : public C3DObject
{
public:
    /// One voxel.
    struct Voxel
    {
        float x; ///< centre in scene coordinates, millimetres
        float y;
        float z;
        long nID;     ///< number from C3DSGNode::m_nObjectCount; its lower 32 bits are the voxel's OpenGL name
        float fValue; ///< amount in the voxel
    };

    float m_fVoxelSize = 1.0f; ///< edge of a voxel, millimetres
    long m_nVoxels = 0;        ///< number of voxels
    float m_fAttribMin = 0.0f; ///< lowest voxel value, or what the loader gave as such
    float m_fAttribMax = 0.0f; ///< highest voxel value, or what the loader gave as such
    COrmPalette m_objPalette;  ///< colours the voxels; values below its range are not drawn
    bool m_bMIP = false;       ///< maximum intensity projection instead of translucent voxels

    /// Most voxels that one volume can hold.
    static constexpr unsigned long nMaxVoxels = 64'000'000;

    explicit C3DVolume(QString strName);
    C3DVolume(const C3DVolume& objOther);
    C3DVolume& operator=(const C3DVolume& objOther);
    ~C3DVolume() override;

    /// Reads the source volume section of a result document of version "1.0" or "2.0" and gives the voxels new numbers.
    /// @param strKind "SOLA" or "NOVA": the kind that the section must have
    /// On failure the volume stays as it was, the reason goes to the log and the result is false.
    bool loadFromXML(CPLResultXMLWrapper* pWrapper, const QString& strKind);
    /// Replaces all voxels by a copy of the array and unmarks them; the palette's range becomes fMin to fMax.
    /// False, with the volume as it was, for a size that is not above 0, a null array of some voxels, or more voxels than can be held.
    bool loadVoxelData(float fVoxelSize, unsigned long nVoxels, C3DVolume::Voxel* pVoxels, float fMin, float fMax);
    /// The same with an array that is taken over instead of copied.
    bool takeVoxelData(float fVoxelSize, QVector<Voxel> vecVoxels, float fMin, float fMax);
    /// The same with separate arrays, which must be of as many voxels. The voxels take new numbers.
    bool takeVoxels(float fVoxelSize, SVoxelArrays sVoxels, float fMin, float fMax);
    /// The same for voxels that stay where they are and get other values, one for each.
    bool takeValues(OrmArray<float> vecValues, float fMin, float fMax);
    /// The same with all that another volume's voxels are but their numbers: the two share it.
    void shareVoxels(const C3DVolume& objOther);

    /// With true and GL_RENDER: draws the voxels with the current matrices. With GL_SELECT: loads the name of each voxel whose centre
    /// is inside the clip volume, with a hit record of one name for each, whatever its value. OpenGL state is left as it was,
    /// but for the name on top of the name stack.
    void render(bool bDraw, unsigned int nMode);

    /// Marks every voxel with this number, or with the OpenGL name that this number has. An unknown one does nothing.
    void addToVoxelSelection(long nID);
    void clearAllVoxelSelection();
    /// The sum of the voxel values, added in double precision: with true of the marked voxels, with false of all of them.
    float getTotalFluxForSelectedVoxels(bool bSelected);
    /// Whether the voxel at this position is marked.
    bool isVoxelSelected(int nVoxel) const;

    /// The voxel at this position, or null. It is shared by all copies of the volume: to be read, not to be written.
    C3DVolume::Voxel* getVoxelByNum(int nVoxel);
    /// All voxels as records, for whom separate arrays do not serve: they are made at the first call of this or of getVoxelByNum(), and
    /// stay as long as the voxels.
    const QVector<Voxel>& voxels() const;
    /// x, y, z of the centres of all voxels, millimetres.
    const OrmArray<float>& positions() const;
    /// The values of all voxels.
    const OrmArray<float>& values() const;

    /// True returns the display threshold to its default; false does nothing.
    void setAllDefaultThreshold(bool bDefault);
    /// On a linear scale, voxels below this fraction of the highest value of the volume are not drawn; 0.05 at first.
    void setDisplayThreshold(double fFraction);
    double displayThreshold() const { return m_fDisplayThreshold; }

    /// Sets the table at a place in the list of table names, with low and high end as fractions.
    void setColorTable(int nPosition, float fLow, float fHigh);
    COrmPalette* getColorPalette() { return &m_objPalette; }
    long getNoOfVoxels() const { return m_nVoxels; }
    float getVoxelSize() const { return m_fVoxelSize; }
    float getAttribMinValue() const { return m_fAttribMin; }
    float getAttribMaxValue() const { return m_fAttribMax; }
    void setMIP(bool bMIP) { m_bMIP = bMIP; }
    void setColorMapReversed(int nReversed) { m_objPalette.setReversed(nReversed); }
    void setLogScale(int nLogScale) { m_objPalette.setLogScale(nLogScale); }

private:
    void setBlock(float fVoxelSize, std::shared_ptr<const CVoxelBlock> pBlock, float fMin, float fMax);
    void drawVoxels();
    void drawMarks(CGLDrawScope& objScope, int nPixels, bool bRing);
    void drawHighest(CGLDrawScope& objScope, int nPixels);
    void drawTranslucent(CGLDrawScope& objScope, double fPixels);
    void nameVoxels() const;

    std::shared_ptr<const CVoxelBlock> m_pBlock;                ///< the voxels and what is made of them once; never null
    std::shared_ptr<const CHighestLook> m_pHighestLook;         ///< as it was drawn last; null if it was drawn otherwise or not at all
    std::shared_ptr<const CTranslucentLook> m_pTranslucentLook; ///< the same
    QSharedDataPointer<CVolumeMarks> m_pMarks;                  ///< null while nothing is marked
    double m_fDisplayThreshold;                                 ///< fraction of the highest value
};

Q_DECLARE_TYPEINFO(C3DVolume::Voxel, Q_PRIMITIVE_TYPE);
