#pragma once

#include "SSequenceFacts.h"

#include <QWidget>

class COrmClickModel;
class COrmElidedLabel;
class COrmPictureWidget;
class COrmPreviewLoader;
class COrmSequenceDataset;
class QAbstractItemView;
class QBoxLayout;
class QImage;
class QLabel;
class QLayout;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QTreeView;
struct SSequencePreview;

/// What the selected sequence holds: its photograph, its saved results, its images; and the way from there to the tool.
class COrmSequencePreview : public QWidget
{
    Q_OBJECT

public:
    explicit COrmSequencePreview(QWidget* pParent = nullptr);
    ~COrmSequencePreview() override;

    /// Null: asks for a selection.
    void setSequence(const COrmSequenceDataset* pSequence);
    /// The sequence's files may be others now.
    void refresh(const COrmSequenceDataset* pSequence);
    /// The name of the tool that compares results; empty: there is none, for which @p strReason says what to do.
    void setTool(const QString& strName, const QString& strReason);

signals:
    void compareRequested();

protected:
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    QWidget* makeContent();
    QLayout* makeHead(QWidget* pContent);
    QLayout* makeLists(QWidget* pContent);
    void arrange();
    void updateCompare();
    void showPreview(const SSequencePreview& sPreview);
    void showPicture(const QImage& imgPicture, const QString& strText);
    void fit(QAbstractItemView* pView, int nHeader) const;

    SSequenceFacts m_sFacts; ///< of the sequence shown; without an ID: none
    QString m_strTool;
    QString m_strNoTool; ///< why there is no tool
    COrmPreviewLoader* m_pLoader;
    COrmClickModel* m_pClicks;
    QStackedWidget* m_pPages = nullptr;
    QBoxLayout* m_pParts = nullptr; ///< head and lists, below or beside each other
    bool m_bLow = false;            ///< beside each other
    COrmElidedLabel* m_pTitle = nullptr;
    COrmElidedLabel* m_pSubject = nullptr;
    COrmElidedLabel* m_pKind = nullptr;
    QPushButton* m_pCompareButton = nullptr;
    COrmElidedLabel* m_pCompareHint = nullptr;
    COrmPictureWidget* m_pPicture = nullptr;
    QLabel* m_pResultsLabel = nullptr;
    QListWidget* m_pResults = nullptr;
    QLabel* m_pClicksLabel = nullptr;
    QTreeView* m_pClickTable = nullptr;
};
