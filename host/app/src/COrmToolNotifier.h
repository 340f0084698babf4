#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class COrmToolPluginBase;

/// Tells tools what the host's signal hub says: a hub signal "signalX(...)" reaches the slot "onSignalX(...)" of every tool whose
/// meta-object has that slot, in the order in which the tools were added. A tool that throws does not keep the others from hearing.
class COrmToolNotifier : public QObject
{
    Q_OBJECT

public:
    explicit COrmToolNotifier(QObject* pParent = nullptr);

    void addTool(COrmToolPluginBase* pTool);

private:
    void tell(const char* pSlot, QGenericArgument objArgument = QGenericArgument());

    QList<QPointer<COrmToolPluginBase>> m_lstTools;
};
