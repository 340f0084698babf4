#include "COrmToolPluginBase.h"

/// A tool of another host: all is there but the name.
class CForeignTool : public COrmToolPluginBase
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.example.foreign")
    Q_INTERFACES(COrmToolPluginBase)

public:
    QAction* pluginAction() override { return nullptr; }
    QString PluginMenuItem() override { return QStringLiteral("Foreign Tool"); }
    void init() override {}
    void show() override {}
    bool createObject() override { return true; }
};

#include "ForeignTool.moc"
