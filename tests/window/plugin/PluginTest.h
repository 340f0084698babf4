#pragma once

// What the tests of the tool's library share: the tool loaded from the Plugins folder into a program that knows its base class only, and
// sequences that the host has open.

#include "COrmPreference.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmToolPluginBase.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QListWidget>
#include <QPluginLoader>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace PluginTest
{
const QString g_strPluginFile = QStringLiteral(ORM_BINARY_DIR "/bin/Plugins/libormlongitudinalstudy.so");

inline void write(const QString& strFile, const QByteArray& byText)
{
    QDir().mkpath(QFileInfo(strFile).path());
    QFile objFile(strFile);
    if (!objFile.open(QIODevice::WriteOnly) || objFile.write(byText) != byText.size())
    {
        qFatal("Cannot write %s", qPrintable(strFile));
    }
}

/// How a sequence was acquired.
enum EKind
{
    Luminescent,
    Fluorescent,
    Both,
    Overview,
    Plain,
    LuminescentCT
};

/// Sequences on disk that the host has open.
class COpenSequences
{
public:
    COrmSequenceDataset* open(const QString& strSequenceID, EKind eKind)
    {
        const QString strFolder = m_objFolder.filePath(QString::number(++m_nFolders)) + QLatin1Char('/');
        QByteArray by = "[Sequence Information]\nSequence=" + strSequenceID.toUtf8() + '\n';
        by += eKind == Overview ? "Trans-illumination Overview=1\n" : "";
        by += "[Click Numbers]\nCount=2\n1=C1\n2=C2\n";
        by += eKind == LuminescentCT ? "[CT Acquisition Parameters]\nVoltage=50\n" : "";
        write(strFolder + QStringLiteral("SequenceInfo.txt"), by);
        for (int i = 1; i <= 2; ++i)
        {
            QByteArray byClick = "[photographic image]\nField of View=13.6\n";
            byClick += eKind == Plain || eKind == LuminescentCT ? "" : "[structure image]\n[reference image]\n";
            const bool bFluorescent = eKind == Fluorescent || eKind == Overview || (eKind == Both && i == 2);
            byClick += "[luminescent image]\n";
            byClick += bFluorescent ? "Image Subtype=fluorescent\nFL x-spot=1.25\nFL y-spot=0.5\n" : "Image Subtype=luminescent\n";
            write(strFolder + QStringLiteral("C%1/ClickInfo.txt").arg(i), byClick);
        }
        m_objSequences.open({strFolder});
        COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(strSequenceID);
        if (pSequence == nullptr)
        {
            qFatal("%s is not open", qPrintable(strSequenceID));
        }
        return pSequence;
    }
    void close(const QString& strSequenceID) { m_objSequences.close(strSequenceID); }

private:
    QTemporaryDir m_objFolder;
    COrmSequenceCollection m_objSequences;
    int m_nFolders = 0;
};

/// The tool's window; null without one.
inline QWidget* toolWindow()
{
    for (QWidget* pWidget : QApplication::topLevelWidgets())
    {
        if (pWidget->objectName() == QLatin1String("Longitudinal Study"))
        {
            return pWidget;
        }
    }
    return nullptr;
}

/// What the list of sequences in the tool's window shows.
inline QStringList listedSequences()
{
    const auto* pList = toolWindow() != nullptr ? toolWindow()->findChild<QListWidget*>(QStringLiteral("m_pSequenceNameLW")) : nullptr;
    QStringList lstTexts;
    for (int i = 0; pList != nullptr && i < pList->count(); ++i)
    {
        lstTexts.append(pList->item(i)->text());
    }
    return lstTexts;
}
} // namespace PluginTest

/// Each test function has a tool of its own.
class CPluginTest : public QObject
{
protected:
    void loadTool()
    {
        m_pSequences = std::make_unique<PluginTest::COpenSequences>();
        QPluginLoader objLoader(PluginTest::g_strPluginFile);
        QObject* pInstance = objLoader.instance();
        QVERIFY2(pInstance != nullptr, qPrintable(objLoader.errorString()));
        m_pTool.reset(qobject_cast<COrmToolPluginBase*>(pInstance));
        QVERIFY(m_pTool != nullptr);
        m_pTool->init();
    }
    void removeTool()
    {
        m_pTool.reset();
        m_pSequences.reset();
        QVERIFY(PluginTest::toolWindow() == nullptr);
    }
    COrmToolPluginBase& tool() { return *m_pTool; }

    std::unique_ptr<COrmToolPluginBase> m_pTool;
    std::unique_ptr<PluginTest::COpenSequences> m_pSequences;
};

/// Runs a test object in an application whose 3D views get the surface that Ormelle's have.
template <class T>
int runPluginTest(int nArguments, char** ppArguments)
{
    QSurfaceFormat objFormat;
    objFormat.setVersion(2, 1);
    objFormat.setProfile(QSurfaceFormat::CompatibilityProfile);
    objFormat.setDepthBufferSize(24);
    QSurfaceFormat::setDefaultFormat(objFormat);
    QApplication objApplication(nArguments, ppArguments);
    COrmPreference::setStore(QString());
    T objTest;
    return QTest::qExec(&objTest, nArguments, ppArguments);
}
