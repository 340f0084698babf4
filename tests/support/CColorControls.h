#pragma once

#include "CToolWindow.h"
#include "QDoubleSpinBoxEx.h"
#include "QSpanSlider.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

/// The controls of the colour scale in the tool's window, at hand by what they are.
class CColorControls
{
public:
    explicit CColorControls(CToolWindow& objTool) : m_objWindow(objTool) {}

    CLongitudinalStudyBrowserView& view() { return m_objWindow.view(); }
    CToolWindow& tool() { return m_objWindow; }
    QDoubleSpinBoxEx* minimum() { return m_objWindow.get<QDoubleSpinBoxEx>("m_pColorBarMinSpinbox"); }
    QDoubleSpinBoxEx* maximum() { return m_objWindow.get<QDoubleSpinBoxEx>("m_pColorBarMaxSpinbox"); }
    QSpanSlider* slider() { return m_objWindow.get<QSpanSlider>("m_pColorBarMinMaxSlider"); }
    QSpanSlider* tableSlider() { return m_objWindow.get<QSpanSlider>("m_pSourceColorTableSlider"); }
    QComboBox* table() { return m_objWindow.get<QComboBox>("m_pColorTableCB"); }
    QCheckBox* check(const char* pName) { return m_objWindow.get<QCheckBox>(pName); }

    /// Puts a number in as a whole, as pasting does.
    static void type(QDoubleSpinBox* pBox, const QString& strNumber)
    {
        auto* pEdit = pBox->findChild<QLineEdit*>();
        pEdit->selectAll();
        pEdit->insert(strNumber);
        QTest::keyClick(pBox, Qt::Key_Return);
    }

    /// The current range: SOLA minimum and maximum, NOVA minimum and maximum.
    QList<float> currentRange()
    {
        float f[4] = {};
        view().getMinMax(&f[0], &f[1], &f[2], &f[3]);
        return {f[0], f[1], f[2], f[3]};
    }

private:
    CToolWindow& m_objWindow;
};
