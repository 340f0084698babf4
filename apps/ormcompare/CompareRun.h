#pragma once

#include "CompareOptions.h"
#include "CompareReport.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QVector>

#include <memory>

class CLongitudinalStudyBrowserView;
class CLongitudinalStudyBrowserWnd;
class COrmSequenceCollection;
class QListWidgetItem;
class QWidget;
struct sAnalysisBase;

/// Drives the real window as a person would: opens the sequences, loads results, sets the colour scale, turns, takes pictures.
class CCompareRun : public QObject
{
    Q_OBJECT

public:
    explicit CCompareRun(const SCompareOptions& options);
    ~CCompareRun() override;

    /// Does all that was asked for. True if everything succeeded; otherwise reasons() has one line for each thing that did not.
    bool run();
    const QStringList& reasons() const { return m_lstReasons; }

private:
    void openSequences();
    void selectUnit();
    void loadResults();
    void listSequence(int nRow);
    void loadResult(QListWidgetItem* pResult, const QString& strKind, const QString& strSequence);
    void applyLook();
    void applyColorRange();
    void measureFrames();
    void writePictures();
    void writeReport();

    bool resizeView();
    void paint();
    bool isLoaded(const QString& strKey) const;
    QString unitOf(int nKind) const;
    QString failureReason() const;
    SLoadedResult figures(const sAnalysisBase& result) const;
    void save(const QString& strFile, const QByteArray& aBytes);
    void savePicture(const QString& strFile, const QImage& image);
    void say(const QString& strText) const;
    template <class W>
    W* widget(const char* pszName) const;

    /// A saved result by its rows in the two lists.
    struct SWantedResult
    {
        int m_nSequence = 0;
        int m_nResult = 0;
    };
    QVector<SWantedResult> wantedResults();

    /// What the tool said while one result was loaded.
    struct SLoadTrace
    {
        QStringList m_lstRefusals; ///< log entries of level 2 and 3
        QStringList m_lstTexts;    ///< all log entries and status hints
        QString m_strBox;          ///< text of the last box
        double m_fReadFrom = -1.0; ///< ms, first progress step
        double m_fReadTo = -1.0;   ///< ms, end of reading
    };

    SCompareOptions m_options;
    std::unique_ptr<COrmSequenceCollection> m_pSequences;
    std::unique_ptr<CLongitudinalStudyBrowserWnd> m_pWindow;
    CLongitudinalStudyBrowserView* m_pView = nullptr; ///< owned by the window
    int m_nLogSink = 0;
    QElapsedTimer m_objClock;
    SLoadTrace m_objTrace;
    SCompareReport m_objReport;
    QHash<QString, QPair<double, double>> m_mapTimes; ///< result key to reading and press times, ms
    QStringList m_lstReasons;
};
