#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// Whether everything is to be tried, as ./test --ci does; else a part that is spread over the whole.
inline bool triesAll()
{
    return qEnvironmentVariableIsSet("ORM_TEST_ALL");
}

/// Qt ends a test function after five minutes, which trying all takes on a busy machine. To be called before the test starts.
inline void allowLongFunctions()
{
    qputenv("QTEST_FUNCTION_TIMEOUT", "2000000"); // ms
}

/// How the driver ended.
struct SDriverRun
{
    int nExit = -1; ///< -1: it crashed, or did not end in time
    QString strOutput;
};

/// Runs the driver in the environment.
inline SDriverRun runDriverIn(const QProcessEnvironment& objEnvironment, const QStringList& lstArguments)
{
    QProcess objProcess;
    objProcess.setProcessEnvironment(objEnvironment);
    objProcess.setProcessChannelMode(QProcess::MergedChannels);
    objProcess.start(QStringLiteral(ORM_BINARY_DIR "/tests/ormfaultdriver"), lstArguments);
    SDriverRun objRun;
    constexpr int nPatience = 1500000; // ms
    if (objProcess.waitForFinished(nPatience) && objProcess.exitStatus() == QProcess::NormalExit)
        objRun.nExit = objProcess.exitCode();
    objRun.strOutput = QString::fromUtf8(objProcess.readAll());
    return objRun;
}

/// Runs the driver with the faults in front of the C library.
inline SDriverRun runDriver(const QStringList& lstArguments)
{
    QProcessEnvironment objEnvironment = QProcessEnvironment::systemEnvironment();
    objEnvironment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(ORM_BINARY_DIR "/lib/libormfaults.so"));
    // Mesa colours no pixels, which nobody looks at here and which would take four fifths of the time.
    objEnvironment.insert(QStringLiteral("GALLIUM_NOOP"), QStringLiteral("1"));
    objEnvironment.insert(QStringLiteral("GALLIUM_THREAD"), QStringLiteral("0")); // without it that driver writes beyond its buffers
    objEnvironment.insert(QStringLiteral("ASAN_OPTIONS"),
                          QStringLiteral("detect_leaks=0:allocator_may_return_null=1:verify_asan_link_order=0:alloc_dealloc_mismatch=0"));
    return runDriverIn(objEnvironment, lstArguments);
}

/// Runs the driver with the search for leaks at its end: a build without the sanitizers gets it by preloading.
inline SDriverRun runLeakCheck(const QStringList& lstArguments)
{
    QProcessEnvironment objEnvironment = QProcessEnvironment::systemEnvironment();
#ifdef __SANITIZE_ADDRESS__
    objEnvironment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=1"));
#else
    objEnvironment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(ORM_LSAN_LIBRARY));
#endif
    // Mesa's other renderer makes code as it runs, where the search finds no names.
    objEnvironment.insert(QStringLiteral("GALLIUM_DRIVER"), QStringLiteral("softpipe"));
    objEnvironment.insert(
        QStringLiteral("LSAN_OPTIONS"),
        // A search that crashes, over a library that is built anew beneath it for one, would wait for itself for ever.
        QStringLiteral("handle_segv=0:handle_sigbus=0:print_suppressions=0:suppressions=" ORM_SOURCE_DIR "/tests/faults/leaks.supp"));
    return runDriverIn(objEnvironment, lstArguments);
}
