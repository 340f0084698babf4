#pragma once

#include <QApplication>

/// The application object of the host. An exception that leaves an event handler, of a tool for instance, ends that handler only.
class COrmApplication : public QApplication
{
    Q_OBJECT

public:
    /// Sets what has to be set before an application object exists.
    static void prepare();

    COrmApplication(int& nArguments, char** ppArguments);

    bool notify(QObject* pReceiver, QEvent* pEvent) override;
};
