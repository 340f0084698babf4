#include "COrmToolPluginBase.h"

#include <stdexcept>

/// A tool that fails while it is set up.
class CThrowingTool : public COrmToolPluginBase
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "tdl.ormelle.test.throwing")
    Q_INTERFACES(COrmToolPluginBase)

public:
    QAction* pluginAction() override { return nullptr; }
    QString PluginMenuItem() override { return QStringLiteral("Throwing Tool"); }
    void init() override { throw std::runtime_error("the laser is off"); }
    void show() override {}
    bool createObject() override { return true; }
};

#include "ThrowingTool.moc"
