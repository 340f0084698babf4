#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

class COrmTool;
class COrmToolNotifier;
class COrmToolPluginBase;

/// The tools of the host. Loads libraries from one folder, refuses those that are not to be trusted or not tools of this host with one
/// sentence each, and goes on with the rest. Tools are destroyed together with the manager, the last one loaded first.
class COrmPluginManager : public QObject
{
    Q_OBJECT

public:
    static constexpr int s_nMaxFiles = 1000; ///< libraries beyond that many in the folder are not looked at

    explicit COrmPluginManager(QObject* pParent = nullptr);
    ~COrmPluginManager() override;

    /// The one folder from which tools are loaded: "Plugins" beside the running program or, where there is none, the one that an
    /// installation keeps with its libraries.
    static QString defaultFolder();

    /// Loads what is in the folder, by file name. A folder that is not there holds no tools.
    void loadFolder(const QString& strFolder);
    /// Takes on a tool that is not in a library; it stays its maker's. An empty text, or why it was refused.
    QString addTool(COrmToolPluginBase* pTool, const QString& strIdentifier);

    const std::vector<std::unique_ptr<COrmTool>>& tools() const { return m_lstTools; }
    /// The tool with that name, case aside; null: none.
    COrmTool* tool(const QString& strName) const;
    /// One sentence for each library, or the folder, that was refused.
    QStringList refusals() const { return m_lstRefusals; }

private:
    void loadFile(const QString& strFile);
    QString takeOn(std::unique_ptr<COrmTool> pTool);
    void refuse(const QString& strFile, const QString& strReason);

    std::vector<std::unique_ptr<COrmTool>> m_lstTools;
    COrmToolNotifier* m_pNotifier;
    QStringList m_lstRefusals;
};
