#pragma once

#include <QObject>
#include <QStringList>

class COrmBasePalette;

/// Stands in the place of the user and of the host's displays while things go wrong. It never fails itself. Only one may live at a time.
class CFaultRecorder : public QObject
{
    Q_OBJECT

public:
    CFaultRecorder();
    ~CFaultRecorder() override;

    void watchHints(COrmBasePalette& objPalette);
    void clear();

    /// Texts of the message boxes; each is answered with Yes, or its first button.
    const QStringList& boxes() const { return m_lstBoxes; }
    /// What log and status hint say of a failure.
    const QStringList& reasons() const { return m_lstReasons; }

private:
    void keepReason(const QString& strText);

    QStringList m_lstBoxes;
    QStringList m_lstReasons;
    int m_nSink = 0;
};
