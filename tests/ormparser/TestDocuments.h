#pragma once

#include <QByteArray>

/// Small result documents for tests.
namespace TestDocuments
{
/// A document of which @p baBody is what lies inside the outermost tag.
inline QByteArray document(const QByteArray& baBody, const QByteArray& baVersion = "2.0")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Ormelle.Result Version=\"" + baVersion + "\">\n" + baBody +
           "\n</Ormelle.Result>\n";
}

/// A document with the section First/Second, whose start tag has @p baKeys and which holds @p baRows.
inline QByteArray section(const QByteArray& baKeys, const QByteArray& baRows)
{
    return document("<First>\n<Second " + baKeys + ">" + baRows + "</Second>\n</First>");
}

inline QByteArray repeated(const QByteArray& baText, int nTimes)
{
    QByteArray baResult;
    baResult.reserve(baText.size() * nTimes);
    for (int i = 0; i < nTimes; ++i)
        baResult += baText;
    return baResult;
}

/// Rows <Row Key="0"/>, <Row Key="1"/> and so on.
inline QByteArray numberedRows(int nRows, const QByteArray& baBetween = QByteArray())
{
    QByteArray baRows;
    for (int i = 0; i < nRows; ++i)
        baRows += "<Row Key=\"" + QByteArray::number(i) + "\"/>" + baBetween;
    return baRows;
}

/// A result of version 1.0 as writers make it: values in attributes, one element per value.
inline QByteArray sample10()
{
    return document(
        "  <Orm3.0.Version.Data><Orm3.0.Version Software=\"Ormelle version: 3.1\"/></Orm3.0.Version.Data>\n"
        "  <Orm3.0.SOLA.Data>\n"
        "    <Orm3.0.SOLA.SequenceID><Orm3.0.SOLA.SequenceID.Name SequenceID=\"MH20260801 &amp; more\"/></Orm3.0.SOLA.SequenceID>\n"
        "    <Orm3.0.SOLA.Wavelengths Count=\"2\" Views='3'>\n"
        "      <Orm3.0.SOLA.Wavelength.Name Wavelength=\"560\"/>\n"
        "      <Orm3.0.SOLA.Wavelength.Name Wavelength=\" 620 \"/>\n"
        "      <Orm3.0.SOLA.Wavelength.Name Wavelength=\"\xC2\xB5m\"/>\n"
        "    </Orm3.0.SOLA.Wavelengths>\n"
        "    <!-- densities, one element per value -->\n"
        "    <Orm3.0.SOLA.Measured.Photon.Density.Data Total.WaveLengths=\"2\" Total.Vertices=\"2\">\n"
        "      <Orm3.0.SOLA.Measured.Photon.Density.Value Photon.Density=\"1.5\"/>\n"
        "      <Orm3.0.SOLA.Measured.Photon.Density.Value Photon.Density=\"-2e3\" ></Orm3.0.SOLA.Measured.Photon.Density.Value>\n"
        "      "
        "<Orm3.0.SOLA.Measured.Photon.Density.Value><Photon.Density>0.25</Photon.Density></Orm3.0.SOLA.Measured.Photon.Density.Value>\n"
        "      <Orm3.0.SOLA.Measured.Photon.Density.Value Photon.Density=\"4\"/>\n"
        "    </Orm3.0.SOLA.Measured.Photon.Density.Data>\n"
        "  </Orm3.0.SOLA.Data>",
        "1.0");
}

/// A result of version 2.0 with everything that XML allows between and within its tags.
inline QByteArray sample20()
{
    return "\xEF\xBB\xBF" +
           document("<?host note?><Orm3.0.SOLA.Data unknown=\"1\">\n"
                    "<Orm3.0.SOLA.HeightMap.Data Width=\"2\" Height=\"1\">\n"
                    "<Orm3.0.SOLA.HeightMap.Pixel><Text.Data>0000803F000000C0</Text.Data></Orm3.0.SOLA.HeightMap.Pixel>\n"
                    "<unknown><![CDATA[ <a> ]] ]]></unknown>\n"
                    "</Orm3.0.SOLA.HeightMap.Data>\r\n"
                    "<Orm3.0.SOLA.Results Count=\"2\">\n"
                    "<Orm.3.0.SOLA.Results Key=\"Reduced Chi2\" Value=\"1.02 &lt; &#x3B1;\"/>\n"
                    "<Orm.3.0.SOLA.Results><Value>1<!-- a remark -->00</Value><Key><![CDATA[Final voxel size (mm)]]></Key></"
                    "Orm.3.0.SOLA.Results>\n"
                    "</Orm3.0.SOLA.Results><empty/></Orm3.0.SOLA.Data>\n<!-- the end -->");
}
} // namespace TestDocuments
