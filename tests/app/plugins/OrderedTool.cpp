#include "COrmToolPluginBase.h"

/// A tool that wants to stand before a tool that is loaded later, and hears of nothing.
class COrderedTool : public COrmToolPluginBase
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "tdl.ormelle.test.ordered")
    Q_INTERFACES(COrmToolPluginBase)

public:
    QAction* pluginAction() override
    {
        if (m_pAction == nullptr)
            m_pAction = new QAction(QStringLiteral("Ordered Tool"), this);
        return m_pAction;
    }
    QString PluginMenuItem() override { return QStringLiteral("Ordered Tool"); }
    QString MenuItemBefore() override { return QStringLiteral("Recording Tool"); }
    void init() override {}
    void show() override {}
    bool createObject() override { return false; }
};

#include "OrderedTool.moc"
