#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// A number per vertex of a surface.
struct SOpenMap
{
    QString m_strName;
    std::vector<float> m_vecValues; ///< one per vertex; NaN where there is none
};

/// A surface as an open format holds it.
struct SOpenSurface
{
    std::vector<float> m_vecVertices;    ///< x, y, z of each vertex, all finite, in the unit of the file
    std::vector<quint32> m_vecTriangles; ///< three vertex indexes from 0 per triangle
    std::vector<SOpenMap> m_vecMaps;     ///< in the order of the file
    QStringList m_lstNotes;              ///< what was changed in reading, a sentence each

    qint64 vertexCount() const { return static_cast<qint64>(m_vecVertices.size() / 3); }
    qint64 triangleCount() const { return static_cast<qint64>(m_vecTriangles.size() / 3); }
};
