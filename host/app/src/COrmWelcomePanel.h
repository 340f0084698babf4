#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

class COrmDropPlace;
class COrmRecentList;
class QBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;

/// What stands in the main window while no sequence is open: it says what can be done, and what is being done.
class COrmWelcomePanel : public QWidget
{
    Q_OBJECT

public:
    explicit COrmWelcomePanel(QWidget* pParent = nullptr);

    /// Folders of studies that were opened before, the latest first; with none their part of the panel is hidden.
    void setRecentStudies(const QStringList& lstFolders);
    void setDemoOffered(bool bOffered);
    /// Says that work goes on, with a button that stops it. @p nAll of 0: nobody knows how much there is to do.
    void showWork(const QString& strHeading, const QString& strText, int nDone = 0, int nAll = 0);
    /// Back to what can be done.
    void showChoices();
    /// Shows that what is dragged may be dropped.
    void setDropWelcome(bool bWelcome);

signals:
    void openRequested();
    void demoRequested();
    void recentRequested(const QString& strFolder);
    void clearRecentRequested();
    void stopRequested();

protected:
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    QWidget* makeTexts();
    QWidget* makeChoices();
    QWidget* makeRecent();
    QWidget* makeWork();

    QLabel* m_pHeading = nullptr;
    QLabel* m_pText = nullptr;
    QWidget* m_pChoices = nullptr;
    QBoxLayout* m_pButtonLayout = nullptr;
    QPushButton* m_pDemoButton = nullptr;
    COrmDropPlace* m_pDropPlace = nullptr;
    QWidget* m_pRecent = nullptr;
    COrmRecentList* m_pRecentList = nullptr;
    QWidget* m_pWork = nullptr;
    QProgressBar* m_pProgressBar = nullptr;
    QPushButton* m_pStopButton = nullptr;
};
