#include "C3DMesh.h"

#include "CDrawRehearsal.h"
#include "CGLDrawScope.h"
#include "CMeshGeometry.h"
#include "COrmLog.h"

#include <QtGui/qopengl.h>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace
{
quint8 colorByte(float fFraction)
{
    return fFraction > 0.0f ? static_cast<quint8>(std::lround(std::min(fFraction, 1.0f) * 255.0f)) : quint8(0); // not a number gives 0
}
} // namespace

/// Colours of a density map, with all that they were made of.
struct C3DMesh::SColors
{
    COrmPalette m_objPalette; ///< keeps its table alive, so that the table's address tells it apart from any other
    quint8 m_anPlain[3];
    quint8 m_nAlpha;
    std::vector<quint8> m_vecColors; ///< red, green, blue, alpha of each vertex
};

C3DMesh::C3DMesh(QString strName)
    : C3DObject(std::move(strName)), m_pGeometry(std::make_shared<CMeshGeometry>()), m_afPlainColor{0.78f, 0.78f, 0.80f}
{
    getColorPalette()->setColorTableType(ORM_CT_SURFACE, 0.0f, 1.0f);
}

C3DMesh::C3DMesh(const C3DMesh& objOther) = default;
C3DMesh& C3DMesh::operator=(const C3DMesh& objOther) = default;
C3DMesh::~C3DMesh() = default;

bool C3DMesh::loadMeshData(std::vector<float> vecVertices, std::vector<quint32> vecTriangles)
{
    const std::size_t nVertices = vecVertices.size() / 3;
    if (vecVertices.size() % 3 != 0 || vecTriangles.size() % 3 != 0 || nVertices > std::numeric_limits<int>::max())
    {
        ORM_LOG(3, QStringLiteral("A surface was refused: its lists of vertices and triangles are not made of triples."));
        return false;
    }
    const auto itBad = std::find_if_not(vecVertices.begin(), vecVertices.end(), [](float f) { return std::isfinite(f); });
    if (itBad != vecVertices.end())
    {
        ORM_LOG(
            3,
            QStringLiteral("A surface was refused: vertex %1 has a coordinate that is not finite.").arg((itBad - vecVertices.begin()) / 3));
        return false;
    }
    const auto itOut = std::find_if(vecTriangles.begin(), vecTriangles.end(), [=](quint32 n) { return n >= nVertices; });
    if (itOut != vecTriangles.end())
    {
        ORM_LOG(3, QStringLiteral("A surface was refused: triangle %1 names vertex %2 of %3.")
                       .arg((itOut - vecTriangles.begin()) / 3)
                       .arg(*itOut)
                       .arg(nVertices));
        return false;
    }
    m_pGeometry = std::make_shared<const CMeshGeometry>(std::move(vecVertices), std::move(vecTriangles));
    m_nVertices = static_cast<long>(nVertices);
    m_pDensity = nullptr;
    m_pPalette.reset();
    m_pColors.reset();
    return true;
}

void C3DMesh::getBBox(Coord3d& objMin, Coord3d& objMax) const
{
    objMin = m_pGeometry->min();
    objMax = m_pGeometry->max();
}

long C3DMesh::getNumOfTriangles() const
{
    return static_cast<long>(m_pGeometry->triangleCount());
}

const std::vector<float>& C3DMesh::vertices() const
{
    return m_pGeometry->vertices();
}

const std::vector<quint32>& C3DMesh::triangles() const
{
    return m_pGeometry->triangles();
}

bool C3DMesh::isClosed() const
{
    return m_pGeometry->isClosed();
}

void C3DMesh::setFaceSetColor(float* pColor)
{
    if (pColor)
        std::copy(pColor, pColor + 3, m_afPlainColor);
}

void C3DMesh::setPhotonDensityMapping(float* pDensity, const COrmPalette* pPalette)
{
    m_pDensity = m_nVertices > 0 ? pDensity : nullptr;
    m_pColors.reset();
    m_pPalette = pPalette ? std::make_shared<const COrmPalette>(*pPalette) : nullptr;
    if (!m_pDensity || m_pPalette)
        return;
    float fMin = std::numeric_limits<float>::max();
    float fMax = std::numeric_limits<float>::lowest();
    for (qint64 i = 0; i < m_pGeometry->vertexCount(); ++i)
    {
        if (!std::isfinite(m_pDensity[i]))
            continue;
        fMin = std::min(fMin, m_pDensity[i]);
        fMax = std::max(fMax, m_pDensity[i]);
    }
    if (fMin <= fMax)
        getColorPalette()->SetImageMinMax(fMin, fMax);
}

const COrmPalette& C3DMesh::densityPalette() const
{
    return m_pPalette ? *m_pPalette : *m_objColorMapImage.getPalette();
}

const C3DMesh::SColors& C3DMesh::densityColors(quint8 nAlpha)
{
    const COrmPalette& objPalette = densityPalette();
    const quint8 anPlain[3] = {colorByte(m_afPlainColor[0]), colorByte(m_afPlainColor[1]), colorByte(m_afPlainColor[2])};
    const OrmColorScale::SRange sRange = objPalette.range();
    if (m_pColors)
    {
        const OrmColorScale::SRange sMade = m_pColors->m_objPalette.range();
        if (m_pColors->m_nAlpha == nAlpha && std::equal(anPlain, anPlain + 3, m_pColors->m_anPlain) &&
            m_pColors->m_objPalette.lut() == objPalette.lut() && sMade.m_fMin == sRange.m_fMin && sMade.m_fMax == sRange.m_fMax &&
            sMade.m_bLog == sRange.m_bLog)
            return *m_pColors;
    }
    auto pColors = std::make_shared<SColors>();
    pColors->m_objPalette = objPalette;
    std::copy(anPlain, anPlain + 3, pColors->m_anPlain);
    pColors->m_nAlpha = nAlpha;
    const auto nVertices = static_cast<std::size_t>(m_pGeometry->vertexCount());
    pColors->m_vecColors.resize(4 * nVertices);
    quint8* pOut = pColors->m_vecColors.data();
    for (std::size_t i = 0; i < nVertices; ++i, pOut += 4)
    {
        if (std::isfinite(m_pDensity[i]))
        {
            const QRgb nColor = objPalette.colorForValue(m_pDensity[i]);
            pOut[0] = static_cast<quint8>(qRed(nColor));
            pOut[1] = static_cast<quint8>(qGreen(nColor));
            pOut[2] = static_cast<quint8>(qBlue(nColor));
        }
        else
        {
            std::copy(anPlain, anPlain + 3, pOut);
        }
        pOut[3] = nAlpha;
    }
    m_pColors = std::move(pColors);
    return *m_pColors;
}

void C3DMesh::render(bool bDraw, unsigned int nMode)
{
    const quint8 nAlpha = colorByte(m_fOpacity);
    if (!bDraw || nMode != GL_RENDER || !m_bShown || nAlpha == 0 || m_pGeometry->triangleCount() == 0 || CDrawRehearsal::isUnderWay())
        return;

    const CMeshGeometry& objGeometry = *m_pGeometry;
    const auto nIndexes = static_cast<GLsizei>(objGeometry.triangles().size());
    CGLDrawScope objScope;
    objScope.centreDepth();

    glEnable(GL_LIGHTING);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, objGeometry.isClosed() ? GL_FALSE : GL_TRUE);
    const GLfloat afNone[4] = {0.0f, 0.0f, 0.0f, 1.0f};
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, afNone);
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, afNone);
    glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
    glEnable(GL_COLOR_MATERIAL);
    glFrontFace(objGeometry.isInsideOut() ? GL_CW : GL_CCW);
    if (objGeometry.isClosed())
    {
        glCullFace(GL_BACK);
        glEnable(GL_CULL_FACE);
    }

    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, objGeometry.vertices().data());
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, 0, objGeometry.normals().data());
    if (m_bShowPhotonDensity && m_pDensity)
    {
        glEnableClientState(GL_COLOR_ARRAY);
        glColorPointer(4, GL_UNSIGNED_BYTE, 0, densityColors(nAlpha).m_vecColors.data());
    }
    else
    {
        glColor4ub(colorByte(m_afPlainColor[0]), colorByte(m_afPlainColor[1]), colorByte(m_afPlainColor[2]), nAlpha);
    }

    if (nAlpha < 255)
    {
        // The nearest layer alone is blended over what is there: first its depths, then its colours where the depth is the same. Both
        // passes differ in masks and depth function only, as OpenGL promises equal depths for no more than that.
        glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
        glDrawElements(GL_TRIANGLES, nIndexes, GL_UNSIGNED_INT, objGeometry.triangles().data());
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        glDepthMask(GL_FALSE);
        glDepthFunc(GL_EQUAL);
        glEnable(GL_BLEND);
    }
    glDrawElements(GL_TRIANGLES, nIndexes, GL_UNSIGNED_INT, objGeometry.triangles().data());
}
