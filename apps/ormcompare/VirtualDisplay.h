#pragma once

#include <QString>

#include <sys/types.h>

/// A display without a screen, for a program that has none: an X server (Xvfb) of its own that ends with it, however it ends. Only
/// this program can connect to it.
class CVirtualDisplay
{
public:
    CVirtualDisplay() = default;
    ~CVirtualDisplay();
    CVirtualDisplay(const CVirtualDisplay&) = delete;
    CVirtualDisplay& operator=(const CVirtualDisplay&) = delete;

    /// Whether the environment names no display that windows could be shown on.
    static bool isNeeded();
    /// Starts the server and makes it the display of this process. To be called before there is an application object or a second thread.
    /// Empty, or one sentence on why there is no display.
    QString start();
    /// To be called when the application object has connected: takes the key of the display off the disk.
    void connected();

private:
    QString writeKey();
    QString readNumber(int nPipe);

    pid_t m_nServer = -1;
    QString m_strKeyFile;
};
