#pragma once

#include <QStringList>
#include <QWidget>

class COrmNoticeBar;
class COrmSequenceCollection;
class COrmSequenceList;
class COrmSequenceModel;
class COrmSequencePreview;
class COrmWelcomePanel;
class QSplitter;
class QStackedWidget;

/// The middle of the main window: the list of open sequences beside a preview of the selected one; with none open, a page that says what
/// to do. Above both, a notice where something is amiss.
class COrmSequenceView : public QWidget
{
    Q_OBJECT

public:
    explicit COrmSequenceView(COrmSequenceCollection* pCollection, QWidget* pParent = nullptr);

    /// The page that is shown while no sequence is open.
    COrmWelcomePanel* welcome() const { return m_pWelcome; }
    COrmSequenceList* list() const { return m_pList; }
    COrmSequencePreview* preview() const { return m_pPreview; }
    COrmNoticeBar* notice() const { return m_pNotice; }

    /// IDs of the selected sequences, in the order shown.
    QStringList selectedIDs() const;
    /// The sequence with the keyboard's mark, if it is selected, else the first selected one; null: none.
    QString currentID() const;

    /// Widths of the columns and the share of the preview.
    QByteArray columnState() const;
    QByteArray splitterState() const;
    void restoreState(const QByteArray& arrColumns, const QByteArray& arrSplitter);

protected:
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void updatePage();
    void updatePreview();

    COrmSequenceModel* m_pModel;
    COrmNoticeBar* m_pNotice = nullptr;
    QStackedWidget* m_pPages = nullptr;
    COrmWelcomePanel* m_pWelcome = nullptr;
    QSplitter* m_pSplitter = nullptr;
    COrmSequenceList* m_pList = nullptr;
    COrmSequencePreview* m_pPreview = nullptr;
};
