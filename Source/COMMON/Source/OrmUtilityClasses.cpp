#include "OrmUtilityClasses.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>

#include <algorithm>

COrmHashKeyEater::COrmHashKeyEater(QObject* pParent, const char*) : QObject(pParent) {}

COrmHashKeyEater::~COrmHashKeyEater() = default;

bool COrmHashKeyEater::eventFilter(QObject*, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(pEvent)->key() == Qt::Key_NumberSign)
    {
        QApplication::beep();
        return true;
    }
    return false;
}

COrmComboLineEdit::COrmComboLineEdit(QWidget* pParent, const char* pszName)
    : QLineEdit(QString::fromUtf8(pszName), pParent), m_bPopupOnPress(true)
{
}

COrmComboLineEdit::~COrmComboLineEdit() = default;

void COrmComboLineEdit::mousePressEvent(QMouseEvent*)
{
    if (parentWidget() != nullptr && m_bPopupOnPress)
    {
        static_cast<QComboBox*>(parentWidget())->showPopup();
    }
    m_bPopupOnPress = !m_bPopupOnPress;
}

void* SwapEndian(void* pData, int nSize)
{
    static unsigned char s_byBuffer[16];
    if (nSize == 2 || nSize == 3 || nSize == 4 || nSize == 8 || nSize == 16)
    {
        const auto* pBytes = static_cast<const unsigned char*>(pData);
        std::reverse_copy(pBytes, pBytes + nSize, s_byBuffer);
    }
    return s_byBuffer;
}
