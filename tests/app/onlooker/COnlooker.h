#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QObject>
#include <QStringList>

class QWidget;

/// Sits in a running program and does for a test what a user would: looks at the tool's window and acts on it. Asked on the standard
/// input, a line each with its words apart by tabs; each is answered by a line of JSON on the standard output.
class COnlooker : public QObject
{
    Q_OBJECT

public:
    explicit COnlooker(QObject* pParent = nullptr);

private:
    void listen();
    QJsonValue answer(const QStringList& lstWords);
    QJsonObject look() const;

    QByteArray m_byHeard; ///< what has come of the next line
};
