#pragma once

#include <QListWidget>
#include <QStringList>

/// Folders to choose one from by a click or a key: each with its name, and below it the path.
class COrmRecentList : public QListWidget
{
    Q_OBJECT

public:
    explicit COrmRecentList(QWidget* pParent = nullptr);

    void setFolders(const QStringList& lstFolders);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void chosen(const QString& strFolder);

private:
    int heightFor(int nRows) const;
};
