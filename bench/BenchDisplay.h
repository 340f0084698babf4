#pragma once

#include "COrmPreference.h"
#include "CSOLAView.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QOpenGLWidget>

#include <GL/gl.h>

#include <cstdlib>
#include <functional>

/// The main function of a measurement that draws: needs a display with OpenGL and leaves the user's preferences alone.
namespace BenchDisplay
{
/// Does the work and returns when all frames that it asked for are on the screen, painted as the event loop paints them.
inline void untilShown(QOpenGLWidget& objView, const std::function<void()>& fnWork)
{
    constexpr int nFrameLimitMs = 600'000; // a frame that takes longer will not come
    int nFrames = 0;
    const auto objConnection = QObject::connect(&objView, &QOpenGLWidget::frameSwapped, &objView, [&nFrames] { ++nFrames; });
    fnWork();
    QElapsedTimer objClock;
    objClock.start();
    for (int nShown = -1; nFrames == 0 || nFrames > nShown;)
    {
        nShown = nFrames;
        QCoreApplication::processEvents(nFrames == 0 ? QEventLoop::WaitForMoreEvents : QEventLoop::AllEvents);
        if (objClock.elapsed() > nFrameLimitMs)
        {
            std::abort();
        }
    }
    QObject::disconnect(objConnection);
    objView.makeCurrent();
    glFinish();
}

template <class Application = QApplication>
int run(int argc, char** argv)
{
    CSOLAView::setDefaultFormat();
    const Application app(argc, argv);
    COrmPreference::setStore(QString());
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
    {
        return 1;
    }
    QString strReason;
    if (!CSOLAView::openGLAvailable(&strReason))
    {
        qCritical("%s", qPrintable(strReason));
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
} // namespace BenchDisplay
