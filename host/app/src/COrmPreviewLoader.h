#pragma once

#include "OrmPreviewReader.h"

#include <QObject>
#include <memory>
#include <optional>

/// Reads previews on a thread of their own, one at a time: of the sequences asked for meanwhile only the last one is read.
class COrmPreviewLoader : public QObject
{
    Q_OBJECT

public:
    explicit COrmPreviewLoader(QObject* pParent = nullptr);
    /// Does not wait for a file that does not answer.
    ~COrmPreviewLoader() override;

    /// loaded() follows unless something else is asked for before.
    void request(const SSequenceFacts& sFacts);
    /// Nothing is wanted any more.
    void forget();
    bool isBusy() const { return m_bWanted; }

signals:
    void loaded(const SSequencePreview& sPreview);

private:
    struct SShared;

    void start(const SSequenceFacts& sFacts);
    void take(const SSequencePreview& sPreview);

    std::shared_ptr<SShared> m_pShared;    ///< with the thread
    std::optional<SSequenceFacts> m_sNext; ///< to be read once the thread is done
    bool m_bReading = false;               ///< the thread is at work
    bool m_bWanted = false;                ///< what is read last is still wanted
};
