#pragma once

#include <QObject>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>

/// The demo study: one that lies ready beside the program, or in the user's data folder, or that is made there by the program ormphantom.
class COrmDemoStudy : public QObject
{
    Q_OBJECT

public:
    /// @p strPrograms is the folder of the running program, @p strData the user's folder for the program's data.
    COrmDemoStudy(const QString& strPrograms, const QString& strData, QObject* pParent = nullptr);
    /// For the running program and its user.
    explicit COrmDemoStudy(QObject* pParent = nullptr);
    ~COrmDemoStudy() override;

    /// True if there is a demo study, or the program that makes one.
    bool isOffered() const;
    bool isBusy() const { return m_pProcess != nullptr; }
    /// Finds the demo study or begins to make it; ready() or failed() follows, possibly before this returns.
    void start();
    /// Ends the making; nothing of it stays.
    void cancel();

signals:
    /// The making began.
    void started();
    /// @p nDone of @p nAll sequences are written.
    void progress(int nDone, int nAll);
    void ready(const QString& strFolder);
    /// @p strReason says what went wrong and what to do; empty: cancel() was called.
    void failed(const QString& strReason);

private:
    QString existing() const;
    QString maker() const;
    void finish(const QString& strFolder, const QString& strReason);
    void made();
    void count();

    QString m_strPrograms;
    QString m_strData;
    QTimer m_objTimer; ///< looks how far the maker has come
    std::unique_ptr<QTemporaryDir> m_pUnfinished;
    QProcess* m_pProcess = nullptr; ///< while the study is made
};
