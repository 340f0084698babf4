#include "CToolWindow.h"

#include "COrmSequenceDataset.h"

#include <QPushButton>

CToolWindow::CToolWindow()
    : m_pSequences(std::make_unique<COrmSequenceCollection>()),
      m_pWindow(std::make_unique<CLongitudinalStudyBrowserWnd>(nullptr)),
      m_pView(m_pWindow->findChild<CLongitudinalStudyBrowserView*>())
{
    if (m_pView == nullptr)
    {
        TestWidgets::fail(QStringLiteral("The window has no view"));
    }
    m_objHost.watchHints(*m_pWindow);
    // The lists as the plug-in hands them over: nothing but their markers.
    QList<QString> lstSOLA = {QStringLiteral("SOLA")};
    QList<QString> lstNOVA = {QStringLiteral("NOVA")};
    m_pWindow->updateSequenceNameList(lstSOLA);
    m_pWindow->updateSequenceNameList(lstNOVA);
}

CToolWindow::~CToolWindow()
{
    m_pWindow.reset();
    m_pSequences.reset();
}

void CToolWindow::open(const QString& strFolder)
{
    const int nBefore = m_pSequences->sequences().size();
    m_pSequences->open({strFolder});
    const QList<COrmSequenceDataset*> lstOpen = m_pSequences->sequences();
    for (int i = nBefore; i < lstOpen.size(); ++i)
    {
        QMetaObject::invokeMethod(m_pWindow.get(), "onSequenceAdded", Q_ARG(COrmSequenceDataset*, lstOpen.at(i)));
    }
    QMetaObject::invokeMethod(m_pWindow.get(), "onInitialUpdate");
    m_pWindow->resize(1200, 800);
    m_pWindow->show();
    if (!QTest::qWaitForWindowExposed(m_pWindow.get()))
    {
        TestWidgets::fail(QStringLiteral("The window doesn't show"));
    }
    m_objHost.clear();
}

void CToolWindow::close(const QString& strSequenceID)
{
    COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(strSequenceID);
    if (pSequence == nullptr)
    {
        TestWidgets::fail(QStringLiteral("No open sequence \"%1\"").arg(strSequenceID));
    }
    QMetaObject::invokeMethod(m_pWindow.get(), "onSequenceRemoved", Q_ARG(COrmSequenceDataset*, pSequence));
    m_pSequences->close(strSequenceID);
}

void CToolWindow::chooseSequence(const QString& strEntry)
{
    TestWidgets::clickEntry(get<QListWidget>("m_pSequenceNameLW"), strEntry);
}

QStringList CToolWindow::savedResults()
{
    return TestWidgets::texts(get<QListWidget>("m_pResultWidget"));
}

void CToolWindow::load(const QStringList& lstNames)
{
    TestWidgets::selectEntries(get<QListWidget>("m_pResultWidget"), lstNames);
    TestWidgets::click(get<QPushButton>("m_pLoadButton"));
}

QStringList CToolWindow::tiles()
{
    QStringList lstKeys;
    for (const sAnalysisBase& objRecord : m_pView->getAnalysisParams())
    {
        lstKeys.append(objRecord.strSequenceID + objRecord.strResultName);
    }
    return lstKeys;
}
