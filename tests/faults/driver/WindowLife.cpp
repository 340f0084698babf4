#include "WindowLife.h"

#include "CStudyWriter.h"
#include "CToolWindow.h"

#include <QAction>
#include <QComboBox>
#include <QTabWidget>

#include <vector>

/// Libraries stay, so that the search can say whose a block is that a drawing library left behind when it was unloaded.
extern "C" int dlclose(void* pLibrary) noexcept;
extern "C" int dlclose(void* /*library*/) noexcept
{
    return 0;
}

bool liveOnce()
{
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("SEQ1"));
    objStudy.addSequence(QStringLiteral("SEQ2"), SSequenceLook::fluorescent());
    for (const char* pVersion : {"1.0", "2.0"})
    {
        objStudy.addResult(QStringLiteral("SEQ1"), QLatin1String(pVersion),
                           SResultDocument(SResultDocument::SOLA, QLatin1String(pVersion)));
        SResultDocument objNOVA(SResultDocument::NOVA, QLatin1String(pVersion));
        objNOVA.strSequenceID = QStringLiteral("SEQ2");
        objStudy.addResult(QStringLiteral("SEQ2"), QLatin1String(pVersion), objNOVA);
    }
    objStudy.addResultFile(QStringLiteral("SEQ1"), 0, QStringLiteral("damaged"), SResultDocument().toXml().left(3000));

    CToolWindow objTool;
    objTool.open(objStudy.folder());
    objTool.chooseSequence(QStringLiteral("SOLA SEQ1"));
    objTool.load({QStringLiteral("1.0"), QStringLiteral("damaged"), QStringLiteral("2.0")});
    const bool bLoaded = objTool.tiles().size() == 2;
    objTool.view().grabFramebuffer();
    QComboBox* pWavelengths = objTool.get<QComboBox>("m_pWaveLengthCB");
    pWavelengths->setCurrentIndex(pWavelengths->count() - 1);
    QComboBox* pTables = objTool.get<QComboBox>("m_pColorTableCB");
    pTables->setCurrentIndex(pTables->count() - 1);
    QTabWidget* pTabs = objTool.get<QTabWidget>("m_p3DBrowserTabWidget");
    for (const int nTab : {1, 0})
    {
        pTabs->setCurrentIndex(nTab);
        QCoreApplication::processEvents();
    }
    QAction objAll(QStringLiteral("All Results"));
    QMetaObject::invokeMethod(&objTool.window(), "onClickClearButton", Q_ARG(QAction*, &objAll));
    objTool.chooseSequence(QStringLiteral("NOVA SEQ2"));
    objTool.load({QStringLiteral("1.0"), QStringLiteral("2.0")});
    objTool.view().grabFramebuffer();
    const bool bLoadedAgain = objTool.tiles().size() == 2;
    objTool.window().close();
    return bLoaded && bLoadedAgain;
}

void loseMemory()
{
    constexpr int nBlocks = 100;
    std::vector<QString*> vecLost; // goes, and leaves what it points to
    vecLost.reserve(nBlocks);
    for (int i = 0; i < nBlocks; ++i)
    {
        vecLost.push_back(new QString(QStringLiteral("lost %1").arg(i)));
    }
}
