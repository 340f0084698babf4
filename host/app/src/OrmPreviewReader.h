#pragma once

#include "SSequenceFacts.h"

#include <QImage>
#include <QMetaType>
#include <QString>
#include <QStringList>

/// What the preview of a sequence takes from the disk, beyond what the host keeps of every sequence.
struct SSequencePreview
{
    QImage m_imgPhotograph;   ///< of the first click that names one, made small; null: none
    QString m_strPictureText; ///< why there is no photograph, or which click's it is
    QStringList m_lstSOLA;    ///< names of the saved SOLA results, in the order of their index
    QStringList m_lstNOVA;    ///< the same for NOVA
    QString m_strResultsText; ///< one sentence for an index that cannot be read; empty: none
};

namespace OrmPreviewReader
{
constexpr int s_nPictureEdge = 640; ///< pixels of the longer edge of a photograph, at most

/// Reads the files of a sequence; on any thread. Bad files give texts, nothing fails.
SSequencePreview read(const SSequenceFacts& sFacts);
} // namespace OrmPreviewReader

Q_DECLARE_METATYPE(SSequencePreview)
