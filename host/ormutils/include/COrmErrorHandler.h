#ifndef CORMERRORHANDLER_H
#define CORMERRORHANDLER_H

#include <QString>

#include <functional>

class QWidget;

/// Status codes of the host's error dialog.
enum tag_estatus : int
{
    eStatusFileNotWritable = 64,
    eStatusFileNotReadable = 65
};

/// What the error dialog is asked to show.
struct SErrorRequest
{
    QWidget* pParent = nullptr; ///< may be null
    tag_estatus eStatus = eStatusFileNotReadable;
    QString strExtra; ///< as passed
    QString strText;  ///< the standard text, with the extra string in a line of its own if there is one
};

/// Shows the host's standard text for a status.
class COrmErrorHandler
{
public:
    using FnResponder = std::function<void(const SErrorRequest&)>;

    COrmErrorHandler() = delete;

    /// Shows the text of the status, modal, and under it the extra string if it is not empty.
    static void errorMessage(QWidget* pParent, tag_estatus eStatus, QString strExtra);
    /// "The file cannot be written." for 64, "The file cannot be read." for 65; other codes name their number.
    static QString statusText(tag_estatus eStatus);

    /// Replaces the dialog; an empty function brings back the default, which asks COrmMessageBox.
    static void setResponder(FnResponder fnResponder);
};

#endif
