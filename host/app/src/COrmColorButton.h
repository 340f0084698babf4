#pragma once

#include <QColor>
#include <QPushButton>

/// A button that shows a colour and lets the user choose another in a dialog; each colour that is tried there counts at once, and the old
/// one comes back when the dialog is cancelled.
class COrmColorButton : public QPushButton
{
    Q_OBJECT

public:
    /// @p strWhat: what has the colour, as the dialog's title.
    COrmColorButton(const QString& strWhat, QWidget* pParent);

    QColor color() const { return m_clr; }
    /// Shows the colour; tells nobody.
    void setColor(const QColor& clr);

signals:
    void colorTried(const QColor& clr);
    /// A dialog was opened, or closed.
    void choosing(bool bChoosing);

private:
    void choose();

    QString m_strWhat;
    QColor m_clr;
};
