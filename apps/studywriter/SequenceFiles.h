#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What the info file of a click says. An empty text leaves its line out.
struct SClickText
{
    bool m_bFluorescent = false; ///< else luminescent
    QString m_strEmission;       ///< nm
    QString m_strExcitation;     ///< nm
    QString m_strSpotX;          ///< position of the trans-illumination, cm
    QString m_strSpotY;          ///< likewise
    QString m_strExposure;       ///< seconds
    QString m_strImageFile;      ///< picture in the click's folder
    QString m_strRemark;         ///< first line of the file
};

/// The texts of the files of a sequence, all in UTF-8.
namespace SequenceFiles
{
/// A click of a sequence with a structured-light surface, with a field of view of 13.6 cm.
QByteArray clickInfo(const SClickText& click);

/// The info file of the sequence. The date is one of ISO 8601, with the time of day or, where that is not known, without.
QByteArray sequenceInfo(const QString& strSequenceID, const QString& strSubject, const QString& strDateTime,
                        const QStringList& lstClickNumbers);

/// The number of a click, from 1: the sequence's ID and three digits.
QString clickNumber(const QString& strSequenceID, int nClick);

/// The entry of a saved result in the index of its kind; its document is named like the entry, with ".xml".
QByteArray indexEntry(const QString& strEntry, const QString& strMenuName);
} // namespace SequenceFiles
