#pragma once

#include <QFileDialog>
#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>

class CRecordingHost;

/// What the user does with one save dialog.
struct SSaveAnswer
{
    QString strFilter; ///< extension of the filter to choose; empty: the one that is preselected
    QString strName;   ///< what is typed; a null text: the dialog is cancelled
};

/// What a save dialog shows when it opens.
struct SSaveDialog
{
    QString strCaption;
    QString strFolder;
    QString strName;        ///< in the line for the name
    QStringList lstFilters; ///< extensions, in the order shown
    QString strFilter;      ///< extension of the preselected one
    QString strParent;      ///< object name of the window before which it stands
    bool bConfirmsOverwrite = false;
    bool bSaves = false;
};

/// Answers save dialogs one after another as a user does, by typing and clicking. One dialog too many is cancelled and noted as
/// "unexpected dialog".
class CSaveDialogUser
{
public:
    CSaveDialogUser(CRecordingHost& objHost, const QList<SSaveAnswer>& lstAnswers);

    const QList<SSaveDialog>& seen() const { return m_lstSeen; }
    bool isDone() const { return m_lstAnswers.isEmpty(); }

private:
    void look();
    void answer(QFileDialog* pDialog, const SSaveAnswer& objAnswer);

    CRecordingHost& m_objHost;
    QList<SSaveAnswer> m_lstAnswers;
    QList<SSaveDialog> m_lstSeen;
    QPointer<QFileDialog> m_pAnswered; ///< the dialog that was answered last
    QTimer m_objTimer;
};
