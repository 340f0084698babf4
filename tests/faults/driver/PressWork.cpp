// "press-sola", "press-nova": a whole press of Load in the window, beside a result that is loaded already.

#include "CFaultRecorder.h"
#include "CFaultWork.h"
#include "RecordText.h"

#include "COrmProcess.h"
#include "CStudyWriter.h"
#include "CToolWindow.h"

#include <QAction>
#include <QApplication>

namespace
{
class CPressWork : public CFaultWork
{
public:
    explicit CPressWork(int nKind)
    {
        m_objStudy.addSequence(QStringLiteral("SEQ1"), nKind == 1 ? SSequenceLook::fluorescent() : SSequenceLook::luminescent());
        SResultDocument objDocument(nKind);
        objDocument.setSphere(0);
        objDocument.setCube(2, 1.0);
        m_objStudy.addResult(QStringLiteral("SEQ1"), QStringLiteral("before"), objDocument);
        objDocument.strMeasurementType.clear();
        m_objStudy.addResult(QStringLiteral("SEQ1"), QStringLiteral("R"), objDocument);
        m_objTool.open(m_objStudy.folder());
        m_pRecorder = std::make_unique<CFaultRecorder>(); // takes the place of the window's own
        m_strEntry = nKind == 1 ? QStringLiteral("NOVA SEQ1") : QStringLiteral("SOLA SEQ1");
        m_strIndex = nKind == 1 ? QStringLiteral("/XML/NOVA.txt: ") : QStringLiteral("/XML/SOLA.txt: ");
        loadFirst();
        m_baBefore = tileDigest(QStringLiteral("before"));
    }

    QByteArray folder() const override { return m_objStudy.folder().toLocal8Bit(); }
    bool isRefused() const override { return m_bRefused; }

    void prepare() override
    {
        if (m_objTool.tiles().contains(QStringLiteral("SEQ1R")))
        {
            QAction objRemove(QStringLiteral("Selected Result"));
            QMetaObject::invokeMethod(&m_objTool.window(), "onClickClearButton", Q_ARG(QAction*, &objRemove));
        }
        if (m_objTool.tiles().isEmpty())
        {
            loadFirst();
        }
        const QListWidget* pResults = m_objTool.get<QListWidget>("m_pResultWidget");
        if (pResults->selectedItems().size() != 1 || pResults->selectedItems().first()->text() != QLatin1String("R"))
        {
            selectSecond(); // the list may have been filled anew
        }
        QCoreApplication::processEvents();
        m_pRecorder->clear();
    }

    void run() override
    {
        // As a click on the button ends, without what a call by name would allocate.
        m_objTool.window().qt_metacall(QMetaObject::InvokeMetaMethod, m_nSlot, m_apArguments);
    }

    QString wrongOutcome(const OrmFaults::SPlan& sPlan, const OrmFaults::SRun& sRun) override
    {
        QStringList lstWrong;
        const auto require = [&lstWrong](bool bRight, const char* pWrong)
        {
            if (!bRight)
                lstWrong.append(QLatin1String(pWrong));
        };
        require(QApplication::overrideCursor() == nullptr, "the wait cursor stayed");
        require(!COrmProcess::isProcessInProgress(eLongProcessAnalysis), "the long process runs on");
        require(!COrmProcess::isUserInteractionDisabled(), "the interface is locked");
        const QStringList lstTiles = m_objTool.tiles();
        if (lstTiles.isEmpty() && indexWasUnreadable())
        {
            // The list of a sequence whose index cannot be read is empty, and takes the sequence's tiles with it.
            m_bRefused = true;
            require(m_objTool.view().getLoadedResult().isEmpty(), "keys without tiles");
            return lstWrong.join(QStringLiteral("; "));
        }
        const QStringList lstBoth = {QStringLiteral("SEQ1before"), QStringLiteral("SEQ1R")};
        m_bRefused = lstTiles != lstBoth;
        require(!m_bRefused || lstTiles == lstBoth.mid(0, 1), "the tiles are others");
        require(m_objTool.view().getLoadedResult() == lstTiles, "tiles and loaded keys differ");
        require(m_bRefused || m_objTool.view().getSelectedList() == lstBoth.mid(1), "another result is the selected one");
        require(tileDigest(QStringLiteral("before")) == m_baBefore, "the result loaded before has changed");
        if (!m_bRefused)
        {
            const QByteArray baDigest = tileDigest(QStringLiteral("R"));
            if (sRun.nHit == 0)
                m_baSound = baDigest;
            require(baDigest == m_baSound, "the result is not what its file holds");
        }
        const QStringList& lstBoxes = m_pRecorder->boxes();
        const QStringList lstOne = {QStringLiteral("Unable to load analysis data")};
        if (!m_bRefused)
            require(lstBoxes.isEmpty(), "a box for a load that went well");
        else if (!sPlan.bForEver || sPlan.eKind != OrmFaults::EKind::Memory)
            require(lstBoxes == lstOne, "not one box says so");
        if (m_bRefused && !sPlan.bForEver)
            require(!m_pRecorder->reasons().isEmpty(), "the log has no reason");
        if (!lstWrong.isEmpty())
            lstWrong += QStringList(lstTiles.join(',')) + lstBoxes + m_pRecorder->reasons();
        return lstWrong.join(QStringLiteral("; "));
    }

private:
    void loadFirst()
    {
        m_objTool.chooseSequence(m_strEntry);
        m_objTool.load({QStringLiteral("before")});
        selectSecond();
    }

    void selectSecond()
    {
        m_objTool.chooseSequence(m_strEntry);
        TestWidgets::selectEntries(m_objTool.get<QListWidget>("m_pResultWidget"), {QStringLiteral("R")});
    }

    bool indexWasUnreadable() const { return !m_pRecorder->reasons().filter(m_strIndex).isEmpty(); }

    QByteArray tileDigest(const QString& strResult)
    {
        for (sAnalysisBase& objRecord : m_objTool.view().getAnalysisParams())
        {
            if (objRecord.strResultName == strResult)
                return RecordText::digest(objRecord);
        }
        return QByteArray();
    }

    CStudyWriter m_objStudy;
    CToolWindow m_objTool;
    std::unique_ptr<CFaultRecorder> m_pRecorder;
    const int m_nSlot = m_objTool.window().metaObject()->indexOfSlot("onClickLoadButton()");
    void* m_apArguments[1] = {nullptr};
    QString m_strEntry; ///< in the list of sequences
    QString m_strIndex;
    QByteArray m_baBefore;
    QByteArray m_baSound;
    bool m_bRefused = false;
};
} // namespace

std::unique_ptr<CFaultWork> pressWork(const QString& strName)
{
    if (strName == QLatin1String("press-sola"))
        return std::make_unique<CPressWork>(0);
    if (strName == QLatin1String("press-nova"))
        return std::make_unique<CPressWork>(1);
    return nullptr;
}
