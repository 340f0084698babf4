#pragma once

#include "COrmPreference.h"
#include "CSOLAView.h"

#include <benchmark/benchmark.h>

#include <QApplication>

/// The main function of a measurement that draws: needs a display with OpenGL and leaves the user's preferences alone.
namespace BenchDisplay
{
inline int run(int argc, char** argv)
{
    CSOLAView::setDefaultFormat();
    const QApplication app(argc, argv);
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
