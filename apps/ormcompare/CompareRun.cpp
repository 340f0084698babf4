#include "CompareRun.h"

#include "COrmLog.h"
#include "COrmMessageBox.h"
#include "COrmPreference.h"
#include "COrmProcess.h"
#include "COrmProcessNotifier.h"
#include "COrmSequenceCollection.h"

#include <QApplication>
#include <QFileInfo>
#include <QListWidget>
#include <QRadioButton>

#include <cstdio>

CCompareRun::CCompareRun(const SCompareOptions& options) : m_options(options)
{
    COrmPreference::setStore(QString());
    COrmMessageBox::setResponder(
        [this](const SMessageRequest& request)
        {
            m_objTrace.m_strBox = request.strText;
            return request.bTextButtons ? request.nDefault : static_cast<int>(QMessageBox::Ok);
        });
    m_nLogSink = getLogObject()->addSink(
        [this](const SLogEntry& entry)
        {
            // The tool's own entries name no file; the host's libraries do.
            if (!entry.strFile.isEmpty())
            {
                return;
            }
            m_objTrace.m_lstTexts.append(entry.strMessage);
            if (entry.nLevel == 2 || entry.nLevel == 3)
            {
                m_objTrace.m_lstRefusals.append(entry.strMessage);
            }
        });
    connect(COrmProcess::notifier(), &COrmProcessNotifier::message, this,
            [this](const QString&, int nStep)
            {
                if (nStep == 1)
                {
                    m_objTrace.m_fReadFrom = milliseconds(m_objClock);
                }
            });
}

CCompareRun::CCompareRun(const SCompareOptions& options, const SPictureState& like) : CCompareRun(options)
{
    m_objLike = like;
}

CCompareRun::~CCompareRun()
{
    getLogObject()->removeSink(m_nLogSink);
    COrmMessageBox::setResponder({});
}

bool CCompareRun::run()
{
    m_pWindow = std::make_unique<CLongitudinalStudyBrowserWnd>(nullptr);
    m_pView = m_pWindow->findChild<CLongitudinalStudyBrowserView*>();
    connect(m_pWindow.get(), &COrmBasePalette::statusHintChanged, this,
            [this](const QString& strHint)
            {
                m_objTrace.m_lstTexts.append(strHint);
                if (strHint == QLatin1String("Updating surface mesh..."))
                {
                    m_objTrace.m_fReadTo = milliseconds(m_objClock);
                }
            });
    openSequences();
    selectUnit();
    m_pWindow->show();
    const bool bView = resizeView();
    loadResults();
    applyLook();
    if (m_options.m_bUsualFiles && m_pView->getAnalysisParams().isEmpty() && m_lstReasons.isEmpty())
    {
        fail(QStringLiteral("There is no saved result to show."));
    }
    if (bView)
    {
        measureFrames();
        measureRegion();
        writePictures();
        writePlots();
    }
    collectFigures();
    collectTimes();
    compareWithLike();
    writeTables();
    writeGrowth();
    return m_lstReasons.isEmpty();
}

void CCompareRun::openSequences()
{
    m_pSequences = std::make_unique<COrmSequenceCollection>();
    QStringList lstFolders;
    for (const QString& strFolder : qAsConst(m_options.m_lstFolders))
    {
        if (QFileInfo(strFolder).isDir())
        {
            lstFolders.append(strFolder);
        }
        else
        {
            fail(QStringLiteral("%1 is no folder.").arg(strFolder));
        }
    }
    const SScanOutcome outcome = m_pSequences->open(lstFolders);
    m_lstReasons.append(outcome.m_lstProblems);
    // The markers tell the window which list is which; the sequences follow as the host would report them.
    for (const QString& strKind : {kindName(0), kindName(1)})
    {
        QList<QString> lstMarker{strKind};
        m_pWindow->updateSequenceNameList(lstMarker);
    }
    COrmBasePalette& palette = *m_pWindow;
    for (COrmSequenceDataset* pSequence : m_pSequences->sequences())
    {
        palette.onSequenceAdded(pSequence);
    }
    if (m_lstReasons.isEmpty() && widget<QListWidget>("m_pSequenceNameLW")->count() == 0)
    {
        fail(QStringLiteral("There is no sequence with tomography results under the folders."));
    }
}

void CCompareRun::selectUnit()
{
    for (QRadioButton* pUnit : m_pWindow->findChildren<QRadioButton*>())
    {
        if (!m_options.m_strUnit.isEmpty() && pUnit->text() == m_options.m_strUnit)
        {
            pUnit->setChecked(true);
        }
    }
}

bool CCompareRun::resizeView()
{
    // The window grows with a larger view; a smaller one stands in the middle of its place.
    m_pView->setFixedSize(m_options.m_objSize);
    QCoreApplication::processEvents();
    if (m_pView->size() == m_options.m_objSize)
    {
        return true;
    }
    fail(QStringLiteral("The view cannot be made %1 x %2 pixels; it is %3 x %4.")
             .arg(m_options.m_objSize.width())
             .arg(m_options.m_objSize.height())
             .arg(m_pView->width())
             .arg(m_pView->height()));
    return false;
}

void CCompareRun::paint()
{
    QCoreApplication::processEvents();
    m_pView->settle();
}

void CCompareRun::say(const QString& strText) const
{
    if (!m_options.m_bQuiet)
    {
        std::printf("%s\n", qPrintable(strText));
        std::fflush(stdout);
    }
}
