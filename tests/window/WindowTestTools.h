#pragma once

// What tests of the window's panels share: a study, and a look at what the view keeps to itself.

#include "CStudyWriter.h"
#include "CToolWindow.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QTabWidget>

namespace WindowTest
{
/// Calls a slot of the window that belongs to nobody outside.
template <class... T>
void call(CToolWindow& objTool, const char* pSlot, T... objArguments)
{
    if (!QMetaObject::invokeMethod(&objTool.window(), pSlot, Qt::DirectConnection, objArguments...))
    {
        TestWidgets::fail(QStringLiteral("The window has no slot %1").arg(QLatin1String(pSlot)));
    }
}

/// Lets the view paint until it asks for no more.
inline void paint(CToolWindow& objTool)
{
    objTool.view().update();
    objTool.view().settle();
}

/// Protected numbers of the view.
struct SViewNumbers : public CLongitudinalStudyBrowserView
{
    static float rotationX(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewNumbers::m_fRotationX); }
    static float rotationY(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewNumbers::m_fRotationY); }
    static float rotationZ(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewNumbers::m_fRotationZ); }
    static float meshOpacity(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewNumbers::m_fMeshOpacity); }
    static bool selectsVoxels(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewNumbers::m_bSelectVoxel); }
    static bool showsSurface(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewNumbers::m_bShowSurface); }
    static bool showsVoxels(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewNumbers::m_bShowVoxels); }
    static bool showsDensity(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewNumbers::m_bShowPhotonDensity); }
    static bool usesCustomRange(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewNumbers::m_bUseCustomRange); }
    static bool paletteModified(const CLongitudinalStudyBrowserView& objView) { return objView.*(&SViewNumbers::m_bColorPaletteModified); }
    /// SOLA minimum and maximum, NOVA minimum and maximum.
    static QList<float> customRange(const CLongitudinalStudyBrowserView& objView)
    {
        return {objView.*(&SViewNumbers::m_fCustomSOLAMin), objView.*(&SViewNumbers::m_fCustomSOLAMax),
                objView.*(&SViewNumbers::m_fCustomNOVAMin), objView.*(&SViewNumbers::m_fCustomNOVAMax)};
    }
};

/// A study with three SOLA sequences and one NOVA sequence; S1 has the results "one" and "two", N1 has "dye".
class CStudy
{
public:
    CStudy()
    {
        m_objWriter.addSequence(QStringLiteral("S1"));
        m_objWriter.addSequence(QStringLiteral("S2"));
        m_objWriter.addSequence(QStringLiteral("N1"), SSequenceLook::fluorescent());
        add(QStringLiteral("S1"), QStringLiteral("one"), {QStringLiteral("560"), QStringLiteral("580"), QStringLiteral("600")});
        add(QStringLiteral("S1"), QStringLiteral("two"), {QStringLiteral("620"), QStringLiteral("640")});
        add(QStringLiteral("S2"), QStringLiteral("one"), {QStringLiteral("660")});
        SResultDocument objNOVA(SResultDocument::NOVA);
        objNOVA.strSequenceID = QStringLiteral("N1");
        objNOVA.setNames({QStringLiteral("spot 1"), QStringLiteral("spot 2")});
        m_objWriter.addResult(QStringLiteral("N1"), QStringLiteral("dye"), objNOVA);
        m_objWriter.addResult(QStringLiteral("N1"), QStringLiteral("dye 2"), objNOVA);
    }

    CStudyWriter& writer() { return m_objWriter; }
    QString folder() const { return m_objWriter.folder(); }

private:
    void add(const QString& strSequenceID, const QString& strName, const QStringList& lstWavelengths)
    {
        SResultDocument objSOLA;
        objSOLA.strSequenceID = strSequenceID;
        objSOLA.setNames(lstWavelengths);
        m_objWriter.addResult(strSequenceID, strName, objSOLA);
    }

    CStudyWriter m_objWriter;
};

inline QStringList entries(const QComboBox* pCombo)
{
    QStringList lstTexts;
    for (int i = 0; i < pCombo->count(); ++i)
    {
        lstTexts.append(pCombo->itemText(i));
    }
    return lstTexts;
}

inline QStringList menuTexts(const QMenu* pMenu)
{
    QStringList lstTexts;
    for (const QAction* pAction : pMenu->actions())
    {
        lstTexts.append(pAction->text());
    }
    return lstTexts;
}

/// The context menu of the sequence list: the window's menu that no button has.
inline QMenu* sequenceMenu(CToolWindow& objTool)
{
    for (QMenu* pMenu : objTool.window().findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly))
    {
        if (menuTexts(pMenu) == QStringList{QStringLiteral("Remove")})
        {
            return pMenu;
        }
    }
    TestWidgets::fail(QStringLiteral("The sequence list has no menu"));
}
} // namespace WindowTest
