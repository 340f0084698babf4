#pragma once

#include <QLineEdit>
#include <QObject>

/// Keeps the hash character out of the text field on which it is installed as an event filter.
class COrmHashKeyEater : public QObject
{
    Q_OBJECT

public:
    /// The name is not used.
    COrmHashKeyEater(QObject* pParent, const char* pszName);
    ~COrmHashKeyEater() override;

    /// Eats the key with a beep; lets everything else pass.
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;
};

/// A line edit inside a combo box, on which every second press, beginning with the first, opens the popup instead of moving the cursor.
class COrmComboLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    /// @p pParent must be a combo box or null; @p pszName becomes the contents.
    COrmComboLineEdit(QWidget* pParent, const char* pszName);
    ~COrmComboLineEdit() override;

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;

private:
    bool m_bPopupOnPress; ///< the next press opens the popup
};

/// Reverses the @p nSize bytes at @p pData into a buffer of the function's own and returns that. Sizes are 2, 3, 4, 8 and 16; for any
/// other the buffer is returned as the last call left it. Not reentrant: a result is valid until the next call.
void* SwapEndian(void* pData, int nSize);
