#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <pugixml.hpp>

/// What a result document of version 2.0 holds, read by plain means: each text of numbers as its bytes.
struct SStoredDocument
{
    QByteArray m_baVertices;
    QByteArray m_baTriangles;
    QByteArray m_baVoxels;
    QList<QByteArray> m_lstMeasured;
    QStringList m_lstChannels;
    QString m_strVoxelSize;
    QMap<QString, QString> m_mapCalibration;
    QMap<QString, QString> m_mapTable;

    static SStoredDocument of(const QString& strFile)
    {
        SStoredDocument document;
        pugi::xml_document xml;
        xml.load_file(strFile.toUtf8().constData());
        const auto hex = [](const pugi::xml_node& node) { return QByteArray::fromHex(node.child("Text.Data").child_value()); };
        const pugi::xml_node root = xml.child("Ormelle.Result");
        const pugi::xml_node surface = root.child("Orm3.0.Surface.Data");
        document.m_baVertices = hex(surface.child("Orm3.0.Surface.Vertices").child("Orm3.0.Surface.Vertices.Values"));
        document.m_baTriangles = hex(surface.child("Orm3.0.Surface.Triangles").child("Orm3.0.Surface.Triangles.Values"));
        const pugi::xml_node voxels = root.child("Orm3.0.Volume.Data").child("Orm3.0.Volume.Voxels");
        document.m_baVoxels = hex(voxels.child("Orm3.0.Volume.Voxels.Values"));
        document.m_strVoxelSize = voxels.attribute("VoxelSize").value();
        for (const pugi::xml_attribute& key : root.child("Orm3.0.WellPlate.Data").child("Orm3.0.WellPlate.Quantification").attributes())
        {
            document.m_mapCalibration.insert(key.name(), key.value());
        }
        const bool bNova = root.child("Orm3.0.NOVA.Data");
        const std::string strPrefix = bNova ? "Orm3.0.NOVA." : "Orm3.0.SOLA.";
        const pugi::xml_node data = root.child((strPrefix + "Data").c_str());
        for (const pugi::xml_node& row : data.child((strPrefix + "Measured.Photon.Density.Data").c_str()).children())
        {
            document.m_lstMeasured.append(hex(row));
        }
        for (const pugi::xml_node& name : data.child((strPrefix + (bNova ? "Imagesource" : "Wavelengths")).c_str()).children())
        {
            document.m_lstChannels.append(QString::fromUtf8(name.attribute(bNova ? "ImgSources" : "Wavelength").value()));
        }
        for (const pugi::xml_node& row : data.child((strPrefix + "Results").c_str()).children())
        {
            document.m_mapTable.insert(QString::fromUtf8(row.attribute("Key").value()), QString::fromUtf8(row.attribute("Value").value()));
        }
        return document;
    }
};
