#pragma once

#include <QLineEdit>

/// The line above a list that says what the list shows. Escape empties it; the arrow down, Return, and Escape once more lead to the list.
class COrmFilterEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit COrmFilterEdit(QWidget* pParent = nullptr);

signals:
    void leaveRequested();

protected:
    bool event(QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
};
