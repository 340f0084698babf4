#pragma once

#include "CompareOptions.h"
#include "CompareReport.h"
#include "LongitudinalStudyBrowserView.h"
#include "LongitudinalStudyBrowserWnd.h"
#include "PictureState.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QHash>
#include <QObject>
#include <QRect>
#include <QSet>
#include <QVector>

#include <memory>
#include <optional>

class COrmSequenceCollection;
class QListWidgetItem;

/// Drives the real window as a person would: opens the sequences, loads results, sets the colour scale, turns, measures, takes pictures.
class CCompareRun : public QObject
{
    Q_OBJECT

public:
    explicit CCompareRun(const SCompareOptions& options);
    /// Repeats a picture: the options have its look and results, the state is what the outcome is compared with.
    CCompareRun(const SCompareOptions& options, const SPictureState& like);
    ~CCompareRun() override;

    /// Does all that was asked for. True if everything succeeded; otherwise reasons() has one line for each thing that did not.
    bool run();
    const QStringList& reasons() const { return m_lstReasons; }

private:
    /// A kind of result, 0 or 1, as the lists write it.
    static QString kindName(int nKind) { return nKind == 0 ? QStringLiteral("SOLA") : QStringLiteral("NOVA"); }
    static double milliseconds(const QElapsedTimer& clock) { return static_cast<double>(clock.nsecsElapsed()) / 1.0e6; }

    // ---- Life, and what all stages use: CompareRun.cpp ---------------------------------------------------------------------------
    void openSequences();
    void selectUnit();
    bool resizeView();
    void paint();
    void fail(const QString& strReason) { m_lstReasons.append(strReason); }
    void say(const QString& strText) const;
    template <class W>
    W* widget(const char* pszName) const
    {
        return m_pWindow->findChild<W*>(QLatin1String(pszName));
    }

    // ---- Loading: CompareRun_Loading.cpp -----------------------------------------------------------------------------------------
    void loadResults();
    void listSequence(int nRow);
    void loadResult(QListWidgetItem* pResult, const QString& strKind, const QString& strSequence);
    bool isLoaded(const QString& strKey) const;
    QString failureReason() const;

    // ---- Colour scale, rotation, density maps: CompareRun_Look.cpp ---------------------------------------------------------------
    void applyLook();
    void applyColors();
    void applyColorRange();
    void applyWavelength();
    bool listResult(const sAnalysisBase& result);

    // ---- Frame times and the region of interest: CompareRun_Measuring.cpp --------------------------------------------------------
    void measureFrames();
    void measureRegion();
    /// The picture of the first tile, window pixels with the origin at the bottom left; empty for none. Moves the pointer.
    QRect firstTile();
    void sendMouse(QEvent::Type type, const QPoint& position, Qt::MouseButton button, Qt::MouseButtons buttons);

    // ---- What is written: CompareRun_Output.cpp ----------------------------------------------------------------------------------
    void writePictures();
    void writePlots();
    void collectFigures();
    void collectTimes();
    void writeTables();
    void writeGrowth();
    /// What a picture that is written now shows.
    SPictureState state(const QString& strPicture) const;
    void compareWithLike();
    SLoadedResult figures(const sAnalysisBase& result) const;
    /// A file's name for the user.
    QString shownName(const QString& strFile) const;
    void save(const QString& strFile, const QByteArray& aBytes);
    /// @param strShows what it is a picture of, which a PNG carries with the state; empty: nothing that has one
    void savePicture(const QString& strFile, const QImage& image, const QString& strShows);

    /// A saved result by its rows in the two lists.
    struct SWantedResult
    {
        int m_nSequence = 0;
        int m_nResult = 0;
    };
    QVector<SWantedResult> wantedResults();
    bool isWanted(const SResultKey& key, QSet<QString>& setMatched) const;
    void tellMissing(const QSet<QString>& setMatched);

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
    std::optional<SPictureState> m_objLike;                       ///< the picture that is repeated
    QSet<QString> m_setKeys;                                      ///< texts of the results to load or try, where they are named
    QVector<QPair<QString, QRegularExpression>> m_lstExpressions; ///< the patterns of the results to load
    QVector<QPair<QString, QString>> m_lstAsked;                  ///< kind and sequence of the time points that were asked for
    std::unique_ptr<COrmSequenceCollection> m_pSequences;
    std::unique_ptr<CLongitudinalStudyBrowserWnd> m_pWindow;
    CLongitudinalStudyBrowserView* m_pView = nullptr; ///< owned by the window
    int m_nLogSink = 0;
    QElapsedTimer m_objClock;
    SLoadTrace m_objTrace;
    QVector<SResultKey> m_lstRefused; ///< tried and not loaded
    SCompareReport m_objReport;
    QHash<QString, QPair<double, double>> m_mapTimes; ///< result key to reading and press times, ms
    QStringList m_lstReasons;
};
