#include "QDoubleSpinBoxEx.h"

#include <QLineEdit>
#include <QLocale>
#include <QRegularExpression>
#include <QStyleOptionSpinBox>

namespace
{
constexpr int g_nDigits = 5; ///< significant digits of a shown value

/// "1.2346e7" of "1.2346e+07": the exponent without the padding that nobody reads.
QString withShortExponent(const QString& strNumber)
{
    const int nExponent = strNumber.indexOf(QLatin1Char('e'));
    if (nExponent < 0)
        return strNumber;
    return strNumber.left(nExponent + 1) + QString::number(strNumber.mid(nExponent + 1).toInt());
}
} // namespace

QDoubleSpinBoxEx::QDoubleSpinBoxEx(QWidget* pParent) : QDoubleSpinBox(pParent) {}

void QDoubleSpinBoxEx::setScientificNotation(bool bScientific)
{
    if (bScientific == m_bScientific)
        return;
    m_bScientific = bScientific;
    setPrefix(prefix()); // the one public call that writes the text anew and leaves the value alone
}

QString QDoubleSpinBoxEx::textFromValue(double fValue) const
{
    if (!m_bScientific)
        return QDoubleSpinBox::textFromValue(fValue);
    if (fValue == 0)
        return QStringLiteral("0"); // zero has no sign here
    return withShortExponent(QString::number(fValue, 'g', g_nDigits));
}

QString QDoubleSpinBoxEx::bare(const QString& strText) const
{
    QString strBare = strText;
    if (!prefix().isEmpty() && strBare.startsWith(prefix()))
        strBare.remove(0, prefix().size());
    if (!suffix().isEmpty() && strBare.endsWith(suffix()))
        strBare.chop(suffix().size());
    return strBare.trimmed();
}

double QDoubleSpinBoxEx::valueFromText(const QString& strText) const
{
    if (!m_bScientific)
        return QDoubleSpinBox::valueFromText(strText);
    const QString strBare = bare(strText);
    // The text holds fewer digits than the value. As long as it is what the value itself shows, nobody typed anything.
    if (strBare == textFromValue(value()))
        return value();
    bool bOk = false;
    const double fValue = QLocale::c().toDouble(strBare, &bOk);
    return bOk ? fValue : value();
}

QValidator::State QDoubleSpinBoxEx::validate(QString& strText, int& nPosition) const
{
    if (!m_bScientific)
        return QDoubleSpinBox::validate(strText, nPosition);
    const QString strBare = bare(strText);
    if (strBare == textFromValue(value()) || (!specialValueText().isEmpty() && strText == specialValueText()))
        return QValidator::Acceptable;
    static const QRegularExpression s_reBeginning(QStringLiteral("\\A([+-]?)(\\d*)(\\.?)(\\d*)(?:[eE][+-]?\\d{0,3})?\\z"),
                                                  QRegularExpression::DontCaptureOption);
    if (!s_reBeginning.match(strBare).hasMatch() || (strBare.startsWith(QLatin1Char('-')) && minimum() >= 0))
        return QValidator::Invalid;
    if (strBare.startsWith(QLatin1Char('e'), Qt::CaseInsensitive))
        return QValidator::Invalid;
    bool bOk = false;
    const double fValue = QLocale::c().toDouble(strBare, &bOk);
    return bOk && fValue >= minimum() && fValue <= maximum() ? QValidator::Acceptable : QValidator::Intermediate;
}

QSize QDoubleSpinBoxEx::sizeHint() const
{
    QSize szHint = QDoubleSpinBox::sizeHint();
    if (!m_bScientific)
        return szHint;
    // The longest text there is, whatever value is shown: the box must not change its width while the user steps through values.
    ensurePolished();
    const QString strLongest = (minimum() < 0 ? QStringLiteral("-") : QString()) + QStringLiteral("8.8888e-88");
    const int nText = fontMetrics().horizontalAdvance(prefix() + strLongest + suffix() + QLatin1Char(' '));
    QStyleOptionSpinBox objOption;
    initStyleOption(&objOption);
    const QSize szContents(nText + 2, lineEdit()->sizeHint().height());
    szHint.setWidth(style()->sizeFromContents(QStyle::CT_SpinBox, &objOption, szContents, this).width());
    return szHint;
}

QSize QDoubleSpinBoxEx::minimumSizeHint() const
{
    return m_bScientific ? sizeHint() : QDoubleSpinBox::minimumSizeHint();
}
