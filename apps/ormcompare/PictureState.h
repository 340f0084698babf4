#pragma once

#include "CompareOptions.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <array>
#include <optional>

/// How the results of one kind are shown.
struct SKindState
{
    QString m_strUnit;   ///< of the values
    QString m_strColors; ///< name of the colour table
    bool m_bLog = false; ///< logarithmic colour scale
    double m_fMin = 0.0; ///< of the colour bar
    double m_fMax = 0.0;
};

/// What made a picture: enough to make it again, and to tell what it shows.
struct SPictureState
{
    QString m_strVersion;                                ///< of the program
    QString m_strPicture;                                ///< what it is a picture of, in words
    QStringList m_lstLook;                               ///< as SCompareOptions::m_lstLook
    QVector<SResultKey> m_lstResults;                    ///< in tile order
    QVector<SResultKey> m_lstRefused;                    ///< tried beside them and not loaded: the window shows what was clicked last
    std::array<std::optional<SKindState>, 2> m_arrKinds; ///< SOLA and NOVA, where there are results
    bool m_bMip = false;                                 ///< maximum intensity projection
    int m_nRotation = 0;                                 ///< degrees
    QString m_strWavelength;                             ///< density map that was asked for; empty: as loaded
    QString m_strRegion;                                 ///< measuring rectangle that was asked for; empty: none
};

namespace PictureState
{
/// The text keys of a picture under which program and state stand.
QString softwareKey();
QString stateKey();

/// The state as JSON text in ASCII, which survives in a picture's text as it is.
QByteArray toJson(const SPictureState& state);

/// Reads a state, which may be anything. Returns an empty text, or one sentence on what is wrong with it.
QString fromJson(const QByteArray& aJson, SPictureState& state);

/// Reads the state that a PNG picture carries; the picture itself is not decoded. Returns an empty text, or one sentence on why there is
/// none.
QString fromFile(const QString& strFile, SPictureState& state);
} // namespace PictureState
