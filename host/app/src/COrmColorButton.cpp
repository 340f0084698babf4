#include "COrmColorButton.h"

#include <QColorDialog>
#include <QPainter>
#include <QPixmap>

COrmColorButton::COrmColorButton(const QString& strWhat, QWidget* pParent) : QPushButton(pParent), m_strWhat(strWhat)
{
    setAccessibleName(strWhat);
    setAutoDefault(false); // only who presses it means it
    const int nHeight = fontMetrics().height();
    setIconSize(QSize(2 * nHeight, nHeight));
    connect(this, &QPushButton::clicked, this, &COrmColorButton::choose);
}

void COrmColorButton::setColor(const QColor& clr)
{
    m_clr = clr;
    QPixmap objSwatch(iconSize());
    objSwatch.fill(clr);
    QPainter objPainter(&objSwatch);
    // Seen on a light and on a dark button.
    objPainter.setPen(QColor(128, 128, 128));
    objPainter.drawRect(objSwatch.rect().adjusted(0, 0, -1, -1));
    objPainter.end();
    setIcon(QIcon(objSwatch));
    setText(clr.name().toUpper());
    setAccessibleDescription(clr.name());
}

void COrmColorButton::choose()
{
    const QColor clrBefore = m_clr;
    auto* pDialog = new QColorDialog(m_clr, this);
    pDialog->setObjectName(QStringLiteral("colorDialog"));
    pDialog->setAttribute(Qt::WA_DeleteOnClose);
    pDialog->setOption(QColorDialog::DontUseNativeDialog); // not every desktop's own dialog tells what is tried
    pDialog->setWindowTitle(m_strWhat);
    connect(pDialog, &QColorDialog::currentColorChanged, this,
            [this](const QColor& clr)
            {
                setColor(clr);
                emit colorTried(clr);
            });
    connect(pDialog, &QColorDialog::finished, this,
            [this, clrBefore](int nResult)
            {
                if (nResult != QDialog::Accepted && m_clr != clrBefore)
                {
                    setColor(clrBefore);
                    emit colorTried(clrBefore);
                }
                emit choosing(false);
            });
    emit choosing(true);
    pDialog->open();
}
