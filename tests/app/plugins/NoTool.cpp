#include <QObject>
#include <QtPlugin>

/// A plug-in with the right name that is no tool.
class CNoTool : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "tdl.ormelle.test.notool")
};

#include "NoTool.moc"
