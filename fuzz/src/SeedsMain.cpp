// Writes the inputs that fuzzing begins with, a folder per target: ./fuzzseeds ORMPHANTOM OUT
//
// Phantom studies of both format versions give real files; the rest are small texts by hand and lists of choices for the targets' grammars.

#include "FuzzTarget.h"
#include "OrmDocumentLimits.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>
#include <random>

namespace
{
constexpr int nChoiceLists = 150;
constexpr int nLargestFile = 65536; ///< bytes; larger files would slow the fuzzing down
constexpr int nTimeoutMs = 60000;

class CSeeds
{
public:
    explicit CSeeds(const QString& strFolder) : m_strFolder(strFolder) {}

    bool isGood() const { return m_bGood; }
    void add(const QString& strTarget, const QByteArray& baContent)
    {
        const QString strFolder = m_strFolder + QLatin1Char('/') + strTarget;
        QFile objFile(QStringLiteral("%1/%2").arg(strFolder).arg(m_nCount++, 4, 10, QLatin1Char('0')));
        m_bGood = QDir().mkpath(strFolder) && objFile.open(QIODevice::WriteOnly) && objFile.write(baContent) == baContent.size() && m_bGood;
    }
    void add(const QStringList& lstTargets, const QByteArray& baContent)
    {
        for (const QString& strTarget : lstTargets)
            add(strTarget, baContent);
    }

private:
    QString m_strFolder;
    int m_nCount = 0;
    bool m_bGood = true;
};

const QStringList lstDocuments = {QStringLiteral("resultxml"), QStringLiteral("readers")};
const QStringList lstTexts = {QStringLiteral("settingstext"), QStringLiteral("infofiles")};
const QStringList lstOthers = {QStringLiteral("hextext"), QStringLiteral("exportnames")};
const QString strSurfaces = QStringLiteral("surfaces");
const QString strVolumes = QStringLiteral("volumes");
const QStringList lstAll = lstDocuments + lstTexts + lstOthers + QStringList{strSurfaces, strVolumes};

/// A result whose height map has sides that fit their type while their product, of 32 bits, is 0. Chance comes upon such a pair late.
QByteArray withWrappingMap(const QByteArray& baDocument)
{
    QString strDocument = QString::fromUtf8(baDocument);
    strDocument.replace(QRegularExpression(QStringLiteral("Width=\"\\d+\" Height=\"\\d+\"")),
                        QStringLiteral("Width=\"65536\" Height=\"65536\""));
    return strDocument.toUtf8();
}

bool addPhantoms(CSeeds& objSeeds, const QString& strPhantom)
{
    for (const char* pFormat : {"1.0", "2.0"})
    {
        const QTemporaryDir objFolder;
        const QStringList lstOptions = {
            objFolder.path(),      QStringLiteral("--timepoints"), QStringLiteral("1"), QStringLiteral("--vertices"),
            QStringLiteral("14"),  QStringLiteral("--voxel-size"), QStringLiteral("4"), QStringLiteral("--format"),
            QLatin1String(pFormat)};
        QProcess objPhantom;
        objPhantom.start(strPhantom, lstOptions);
        if (!objPhantom.waitForFinished(nTimeoutMs) || objPhantom.exitCode() != 0)
            return false;
        QDirIterator objFiles(objFolder.path(), {QStringLiteral("*.xml"), QStringLiteral("*.txt")}, QDir::Files,
                              QDirIterator::Subdirectories);
        while (objFiles.hasNext())
        {
            QFile objFile(objFiles.next());
            if (!objFile.open(QIODevice::ReadOnly))
                return false;
            const QByteArray baContent = objFile.readAll();
            const bool bDocument = objFile.fileName().endsWith(QLatin1String(".xml"));
            if (baContent.size() <= nLargestFile)
                objSeeds.add(bDocument ? lstDocuments : lstTexts, baContent);
            if (baContent.size() <= nLargestFile && bDocument)
                objSeeds.add(lstDocuments, withWrappingMap(baContent));
        }
    }
    return true;
}

void addByHand(CSeeds& objSeeds)
{
    for (const char* pText :
         {"", "<", "<Ormelle.Result/>", "\xEF\xBB\xBF<?xml version='1.0'?><Ormelle.Result Version='1.0'></Ormelle.Result>\n",
          "<!DOCTYPE a [<!ENTITY b \"c\">]><Ormelle.Result/>",
          "<Ormelle.Result><a><b Count=\"2\"><c k='1'/><c><k>2<!-- -->5</k></c></b></a></Ormelle.Result>",
          "<Ormelle.Result><a><b><d><Text.Data>0000803f000080BF</Text.Data></d></b></a></Ormelle.Result>",
          "<Ormelle.Result><a><b x='&#65;&lt;&#x1F42D;' y=\"a\tb\r\nc\">t<![CDATA[<u>]]>&amp;v</b></a><?p i?></Ormelle.Result><!-- e -->"})
        objSeeds.add(lstDocuments, pText);
    for (const char* pText :
         {"", "[a]\nk=v\n", "k=v\r[ a ] # remark\r\n k = = v ; w\n#c\n[a]\nk=2", "[Click Numbers]\nCount=3\n1=a\n3=c\n2147483647=d\n",
          "[SOLA_1]\nMenuName=Day 0\nFileName=SOLA_1.xml\n[SOLA_2]\nFileName=../x\n",
          "[luminescent image]\nImage Subtype=Fluorescent\nFL x-spot=1.25\nFL y-spot=0.5\nField of View=13.6\n"})
        objSeeds.add(lstTexts, pText);
    for (const char* pText :
         {"0", "-1", "12.5e-3", "1e400", "1e-400", "3.4028235e38", "1e-45", "2147483648", "0000803F000000C0", "0000803g", "+1", "1e"})
        objSeeds.add(lstOthers, pText);
    for (const char* pText :
         {"",
          "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\nproperty float d\n"
          "element face 1\nproperty list uchar int vertex_indices\nend_header\n0 0 0 nan\n1 0 0 1\n0 1 0 .5\n3 0 1 2\n",
          "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\nendsolid\n",
          "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1/1 2//1 3 -1\n"})
        objSeeds.add(strSurfaces, pText);
    for (const char* pText : {"", "NRRD0004\ntype: uchar\ndimension: 3\nsizes: 2 1 1\nencoding: raw\n\nab",
                              "NDims = 3\nDimSize = 2 1 1\nElementType = MET_UCHAR\nElementDataFile = LOCAL\nab"})
        objSeeds.add(strVolumes, pText);
    for (const char* pText : {"/tmp/view", "/tmp/view.png", "/tmp/view.PNG.", "/tmp/a.b/view.svg", "view.tiff", "."})
        objSeeds.add(lstOthers, pText);
}

/// Documents at the limits of XML and one beyond them.
void addLimits(CSeeds& objSeeds)
{
    const QByteArray baStart = "<Ormelle.Result><a><b>";
    const QByteArray baEnd = "</b></a></Ormelle.Result>";
    const auto add = [&](const QByteArray& baInside) { objSeeds.add(lstDocuments, baStart + baInside + baEnd); };
    for (const int nMore : {0, 1})
    {
        const int nDepth = OrmDocumentLimits::nXmlDepth - 3 + nMore;
        add(QByteArray("<c>").repeated(nDepth) + QByteArray("</c>").repeated(nDepth));
        add("<" + QByteArray(static_cast<int>(OrmDocumentLimits::nXmlNameBytes) + nMore, 'n') + "/>");
        add("<c k='1'>" + QByteArray("<d/>").repeated(OrmDocumentLimits::nXmlRowElements + nMore) + "</c>");
        QByteArray baAttributes;
        for (int i = 0; i < OrmDocumentLimits::nXmlAttributes + nMore; ++i)
            baAttributes += " k" + QByteArray::number(i) + "='1'";
        add("<c" + baAttributes + "/>");
    }
}

/// Lists of choices, from short to long: what they leave open stays plain.
void addChoices(CSeeds& objSeeds)
{
    std::mt19937 objRandom(20260801);
    for (int i = 0; i < nChoiceLists; ++i)
    {
        QByteArray baChoices(1, static_cast<char>(FuzzTarget::nChoices));
        for (int n = 0; n < 3 * i; ++n)
            baChoices += static_cast<char>(i % 3 == 0 ? objRandom() % 24 : objRandom() % 256); // small choices are the plain ones
        objSeeds.add(lstAll, baChoices);
    }
}
} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3)
    {
        std::fprintf(stderr, "Usage: fuzzseeds ORMPHANTOM OUT\n");
        return 2;
    }
    const QString strOut = QFile::decodeName(argv[2]);
    CSeeds objSeeds(strOut);
    for (const QString& strTarget : lstAll)
        QDir(strOut + QLatin1Char('/') + strTarget).removeRecursively();
    addByHand(objSeeds);
    addLimits(objSeeds);
    addChoices(objSeeds);
    if (!addPhantoms(objSeeds, QFile::decodeName(argv[1])) || !objSeeds.isGood())
    {
        std::fprintf(stderr, "The seeds could not be written to %s\n", argv[2]);
        return 1;
    }
    return 0;
}
