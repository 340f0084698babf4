#pragma once

#include "COrmSequenceCollection.h"
#include "CRecordingHost.h"
#include "LongitudinalStudyBrowserView.h"
#include "LongitudinalStudyBrowserWnd.h"
#include "TestWidgets.h"

#include <QListWidget>

#include <memory>

/// The tool's window on the screen with a recording host around it, as a user of Ormelle has it before him. The sequences given to
/// open() are open in the host and told to the window.
class CToolWindow
{
public:
    CToolWindow();
    ~CToolWindow();

    CRecordingHost& host() { return m_objHost; }
    CLongitudinalStudyBrowserWnd& window() { return *m_pWindow; }
    CLongitudinalStudyBrowserView& view() { return *m_pView; }
    COrmSequenceCollection& sequences() { return *m_pSequences; }

    /// A widget of the form.
    template <class T>
    T* get(const char* pName)
    {
        return TestWidgets::get<T>(m_pWindow.get(), pName);
    }

    /// Opens every sequence under the folder in the host, tells the window of each, and shows it.
    void open(const QString& strFolder);
    /// Closes one in the host and tells the window.
    void close(const QString& strSequenceID);

    /// Clicks an entry of the sequence list, "SOLA SEQ1" for instance.
    void chooseSequence(const QString& strEntry);
    /// The entries of the list of saved results.
    QStringList savedResults();
    /// Selects exactly these results and presses Load.
    void load(const QStringList& lstNames);
    /// The keys of the loaded results in tile order.
    QStringList tiles();

private:
    CRecordingHost m_objHost;
    std::unique_ptr<COrmSequenceCollection> m_pSequences;
    std::unique_ptr<CLongitudinalStudyBrowserWnd> m_pWindow;
    CLongitudinalStudyBrowserView* m_pView = nullptr; ///< the window's
};
