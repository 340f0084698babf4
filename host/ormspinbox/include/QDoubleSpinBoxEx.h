#ifndef QDOUBLESPINBOXEX_H
#define QDOUBLESPINBOXEX_H

#include <QDoubleSpinBox>

/// A double spin box that can show its value with few significant digits whatever its magnitude: 0.25, 1250, 1.2346e7, 2.5e-7.
/// With the scientific notation on, texts are written and read with a decimal point whatever the locale, and both plain and
/// exponent form may be typed. The value keeps all its digits as long as the text is not edited.
class QDoubleSpinBoxEx : public QDoubleSpinBox
{
    Q_OBJECT
    Q_PROPERTY(bool scientificNotation READ scientificNotation WRITE setScientificNotation)

public:
    explicit QDoubleSpinBoxEx(QWidget* pParent = nullptr);

    bool scientificNotation() const { return m_bScientific; }
    /// Off at first. The value does not change.
    void setScientificNotation(bool bScientific);

    QString textFromValue(double fValue) const override;
    double valueFromText(const QString& strText) const override;
    QValidator::State validate(QString& strText, int& nPosition) const override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    QString bare(const QString& strText) const;

    bool m_bScientific = false; ///< values are shown with few significant digits
};

#endif
