#include "CSaveDialogUser.h"

#include "CRecordingHost.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QWindow>
#include <QtTest>

namespace
{
/// "png" of "PNG Image (*.png)".
QString extension(const QString& strFilter)
{
    return strFilter.section(QStringLiteral("(*."), 1).chopped(1);
}
} // namespace

CSaveDialogUser::CSaveDialogUser(CRecordingHost& objHost, const QList<SSaveAnswer>& lstAnswers)
    : m_objHost(objHost), m_lstAnswers(lstAnswers)
{
    QObject::connect(&m_objTimer, &QTimer::timeout, [this] { look(); });
    m_objTimer.start(1);
}

void CSaveDialogUser::look()
{
    auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (pDialog == nullptr || pDialog == m_pAnswered || pDialog->windowHandle() == nullptr || !pDialog->windowHandle()->isExposed())
    {
        return;
    }
    m_pAnswered = pDialog;
    SSaveDialog objSeen;
    objSeen.strCaption = pDialog->windowTitle();
    objSeen.strFolder = pDialog->directory().absolutePath();
    objSeen.strName = pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text();
    for (const QString& strFilter : pDialog->nameFilters())
    {
        objSeen.lstFilters.append(extension(strFilter));
    }
    objSeen.strFilter = extension(pDialog->selectedNameFilter());
    objSeen.strParent = pDialog->parentWidget() != nullptr ? pDialog->parentWidget()->objectName() : QString();
    objSeen.bConfirmsOverwrite = !pDialog->testOption(QFileDialog::DontConfirmOverwrite);
    objSeen.bSaves = pDialog->acceptMode() == QFileDialog::AcceptSave;
    m_lstSeen.append(objSeen);
    if (m_lstAnswers.isEmpty())
    {
        m_objHost.note(QStringLiteral("unexpected dialog"));
        pDialog->reject();
        return;
    }
    m_objHost.note(QStringLiteral("dialog"));
    answer(pDialog, m_lstAnswers.takeFirst());
}

void CSaveDialogUser::answer(QFileDialog* pDialog, const SSaveAnswer& objAnswer)
{
    auto* pButtons = pDialog->findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
    if (objAnswer.strName.isNull())
    {
        QTest::mouseClick(pButtons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
        return;
    }
    if (!objAnswer.strFilter.isEmpty())
    {
        auto* pCombo = pDialog->findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
        const int nFilter = pCombo->findText(QStringLiteral("(*.%1)").arg(objAnswer.strFilter), Qt::MatchEndsWith);
        if (nFilter < 0)
        {
            m_objHost.note(QStringLiteral("no filter for ") + objAnswer.strFilter);
        }
        pCombo->setCurrentIndex(nFilter);
        emit pCombo->activated(nFilter);
    }
    pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(objAnswer.strName);
    QTest::mouseClick(pButtons->button(QDialogButtonBox::Save), Qt::LeftButton);
    if (pDialog->isVisible())
    {
        m_objHost.note(QStringLiteral("the dialog did not take ") + objAnswer.strName);
        pDialog->reject();
    }
}
