#pragma once

#include "SSequenceFacts.h"

#include <QWidget>

class COrmClickModel;
class COrmElidedLabel;
class COrmPictureWidget;
class COrmPreviewLoader;
class COrmSequenceDataset;
class QLabel;
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

private:
    QWidget* makeContent();
    void makeLists(QWidget* pContent);
    void updateCompare();
    void showPreview(const SSequencePreview& sPreview);
    void fitTable(QWidget* pTable, int nRows) const;

    SSequenceFacts m_sFacts; ///< of the sequence shown; without an ID: none
    QString m_strTool;
    QString m_strNoTool; ///< why there is no tool
    COrmPreviewLoader* m_pLoader;
    COrmClickModel* m_pClicks;
    QStackedWidget* m_pPages = nullptr;
    COrmElidedLabel* m_pTitle = nullptr;
    COrmElidedLabel* m_pSubject = nullptr;
    QLabel* m_pKind = nullptr;
    QPushButton* m_pCompareButton = nullptr;
    QLabel* m_pCompareHint = nullptr;
    COrmPictureWidget* m_pPicture = nullptr;
    QLabel* m_pResultsLabel = nullptr;
    QListWidget* m_pResults = nullptr;
    QLabel* m_pClicksLabel = nullptr;
    QTreeView* m_pClickTable = nullptr;
};
