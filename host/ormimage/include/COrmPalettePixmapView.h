#pragma once

#include "ORM_COLORTABLE_TYPES.h"

#include <QWidget>

/// A strip that shows a colour table from left to right. It only shows: it takes no focus and no key.
class COrmPalettePixmapView : public QWidget
{
    Q_OBJECT

public:
    explicit COrmPalettePixmapView(QWidget* pParent = nullptr);
    ~COrmPalettePixmapView() override;

    /// Shows the part of a table between two fractions of its length, spread over the whole strip. Fractions are clamped to 0 .. 1.
    void setPaletteCT(ORM_COLORTABLE_TYPES eType, float fLow, float fHigh);
    /// Shows the colours from right to left.
    void setPaletteCTReverse(bool bReverse);

    ORM_COLORTABLE_TYPES paletteCT() const { return m_eType; }
    bool isPaletteCTReversed() const { return m_bReverse; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    void updateDescription();

    ORM_COLORTABLE_TYPES m_eType; ///< table shown
    float m_fLow = 0.0f;          ///< first fraction shown
    float m_fHigh = 1.0f;         ///< last fraction shown
    bool m_bReverse = false;      ///< right to left
};
