// The smallest useful tool: a window that counts the open sequences. The host finds it in its Plugins folder, lists it in the Tools
// menu, and tells it of sequences by those of its slots that are named onSignal...

#include <COrmToolPluginBase.h>

#include <QAction>
#include <QLabel>
#include <QPointer>

/// Counts the open sequences.
class CSequenceCounter : public COrmToolPluginBase
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "tdl.ormelle.example.sequencecounter") // hosts take on what begins with "tdl.ormelle."
    Q_INTERFACES(COrmToolPluginBase)

public:
    ~CSequenceCounter() override { delete m_pWindow; }

    QString PluginMenuItem() override { return QStringLiteral("Sequence Counter"); }
    QAction* pluginAction() override
    {
        if (m_pAction == nullptr)
            m_pAction = new QAction(PluginMenuItem(), this);
        return m_pAction;
    }
    void init() override { m_bVisible = false; }

    /// Makes the window at the first use, and shows it again at each later one.
    bool createObject() override
    {
        if (m_pWindow)
        {
            show();
            return true;
        }
        m_pWindow = new QLabel;
        m_pWindow->setWindowTitle(PluginMenuItem());
        m_pWindow->setAlignment(Qt::AlignCenter);
        m_pWindow->setMinimumSize(320, 120);
        addWidgetToWorkspace(m_pWindow); // the host's Window menu lists it
        tell();
        return true;
    }
    void show() override
    {
        m_pWindow->show();
        m_pWindow->raise();
    }

protected slots:
    void onSignalSequenceAdded(COrmSequenceDataset* /*pSequence*/) override { count(+1); }
    void onSignalSequenceRemoved(COrmSequenceDataset* /*pSequence*/) override { count(-1); }

private:
    void count(int nMore)
    {
        m_nSequences += nMore;
        tell();
    }
    void tell()
    {
        if (m_pWindow)
            m_pWindow->setText(QStringLiteral("Open sequences: %1").arg(m_nSequences));
    }

    QPointer<QLabel> m_pWindow; ///< null until the tool is first used
    int m_nSequences = 0;       ///< as the host has told; sequences may be open before there is a window
};

#include "SequenceCounter.moc"
