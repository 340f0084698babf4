#pragma once

#include "C3DObject.h"
#include "COrmImage.h"
#include "Coord3d.h"

#include <memory>
#include <vector>

class CMeshGeometry;
class CPLResultXMLWrapper;

/// A surface of triangles that draws itself, plain or coloured by one density per vertex. Copies share vertices, triangles, normals
/// and colours until one of them changes. All lengths are millimetres.
class C3DMesh : public C3DObject
{
public:
    COrmImage m_objColorMapImage;      ///< its palette colours the density map; neutral light ramp at first
    long m_nVertices = 0;              ///< number of vertices
    float m_fOpacity = 1.0f;           ///< 0 (nothing is drawn) to 1 (opaque)
    bool m_bShowPhotonDensity = false; ///< coloured by the density map, if there is one, instead of plainly

    explicit C3DMesh(QString strName);
    C3DMesh(const C3DMesh& objOther);
    C3DMesh& operator=(const C3DMesh& objOther);
    ~C3DMesh() override;

    /// Reads the surface section of a result document of version "1.0" or "2.0". On failure the mesh stays as it was, the reason goes
    /// to the log and the result is false.
    bool loadFromXML(CPLResultXMLWrapper* pWrapper);
    /// Replaces the surface. A density map and its colours are dropped, since they belong to the old vertices.
    /// @param vecVertices  x, y, z of each vertex; finite
    /// @param vecTriangles three vertex indexes from 0 per triangle, counter-clockwise seen from outside
    /// False, with the mesh as it was, for a broken triple, an index out of range or a coordinate that is not finite.
    bool loadMeshData(std::vector<float> vecVertices, std::vector<quint32> vecTriangles);

    /// Draws the surface with the current matrices and lights; OpenGL state is left as it was. Draws only with true and GL_RENDER: a
    /// surface has no name of its own in a selection pass.
    void render(bool bDraw, unsigned int nMode);

    /// The smallest and the largest corner; zeros for a mesh without vertices.
    void getBBox(Coord3d& objMin, Coord3d& objMax) const;
    /// Sets the plain colour from three floats, 0 to 1. Null does nothing.
    void setFaceSetColor(float* pColor);
    /// Colours the surface by one float per vertex, which the caller keeps alive as long as this mesh or a copy may be drawn; null
    /// drops the map. With a palette given, the map is drawn in a copy of it as it is; with a null palette in the mesh's own one, whose
    /// range becomes that of the map's finite values. Vertices whose value is not finite keep the plain colour.
    void setPhotonDensityMapping(float* pDensity, const COrmPalette* pPalette);
    void showPhotonDensity(bool bShow) { m_bShowPhotonDensity = bShow; }
    void setOpacity(float fOpacity) { m_fOpacity = fOpacity; }
    COrmPalette* getColorPalette() { return m_objColorMapImage.getPalette(); }
    long getNumOfVertices() const { return m_nVertices; }
    long getNumOfTriangles() const;

    /// x, y, z of each vertex.
    const std::vector<float>& vertices() const;
    /// Three vertex indexes per triangle, as they were given.
    const std::vector<quint32>& triangles() const;
    /// Whether the surface is closed and its triangles turn the same way: see MeshTopology::isClosed().
    bool isClosed() const;

private:
    struct SColors;
    const COrmPalette& densityPalette() const;
    const SColors& densityColors(quint8 nAlpha);

    std::shared_ptr<const CMeshGeometry> m_pGeometry; ///< never null
    float m_afPlainColor[3];                          ///< red, green, blue, 0 to 1
    const float* m_pDensity = nullptr;                ///< the caller's map; null: none
    std::shared_ptr<const COrmPalette> m_pPalette;    ///< the palette given with the map; null: the mesh's own
    std::shared_ptr<const SColors> m_pColors;         ///< colours of the map, made for one state of palette, plain colour and opacity
};
