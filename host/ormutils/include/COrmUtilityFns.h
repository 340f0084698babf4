#ifndef CORMUTILITYFNS_H
#define CORMUTILITYFNS_H

#include <QCursor>
#include <QFont>
#include <QString>

class QComboBox;

/// Small services of the application. GUI thread.
class COrmUtilityFns
{
public:
    COrmUtilityFns() = delete;

    /// The application's display name, used as a caption.
    static QString getAppName();
    /// Shows a cursor over the whole application until the matching restoreCursor().
    static void setCursor(const QCursor& objCursor);
    /// Brings back the cursor from before the last setCursor(). With none set it does nothing, and it never takes away a cursor
    /// that somebody else set.
    static void restoreCursor();
};

/// Default font of the windows' widgets.
QFont getMACDefaultFont();

/// Selects the entry with exactly this text; without such an entry nothing changes.
void updateComboWidget(QComboBox* pCombo, QString strText);

/// Byte order of the machine.
bool IsLittleEndian();

#endif
