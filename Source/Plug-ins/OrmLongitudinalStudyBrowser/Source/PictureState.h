#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <array>
#include <optional>

class QImage;

/// A saved result by its names.
struct SResultKey
{
    QString m_strKind;     ///< "SOLA" or "NOVA"
    QString m_strSequence; ///< sequence ID
    QString m_strName;     ///< result name

    /// What patterns are compared with, and what the user reads.
    QString text() const { return m_strKind + QLatin1Char(' ') + m_strSequence + QLatin1Char('/') + m_strName; }
};

/// How the results of one kind are shown.
struct SKindState
{
    QString m_strUnit;        ///< of the values
    QString m_strColors;      ///< name of the colour table
    bool m_bReversed = false; ///< the table is used from its end
    bool m_bLog = false;      ///< logarithmic colour scale
    double m_fMin = 0.0;      ///< of the colour bar
    double m_fMax = 0.0;
};

/// What made a picture: enough to make it again, and to tell what it shows.
struct SPictureState
{
    QString m_strVersion;                                ///< of the program
    QString m_strPicture;                                ///< what it is a picture of, in words
    QStringList m_lstLook;                               ///< arguments that make the look again; empty: it was made by hand
    QVector<SResultKey> m_lstResults;                    ///< in tile order
    QVector<SResultKey> m_lstRefused;                    ///< tried beside them and not loaded: the window shows what was clicked last
    std::array<std::optional<SKindState>, 2> m_arrKinds; ///< SOLA and NOVA, where there are results
    bool m_bMip = false;                                 ///< maximum intensity projection
    int m_nRotation = 0;                                 ///< degrees
    QString m_strWavelength;                             ///< density map that was asked for; empty: as loaded
    QString m_strRegion;                                 ///< measuring rectangle that was asked for; empty: none
};

/// What pictures say about how they were made, as the texts "Software" and "OrmelleState" of their PNG files.
namespace PictureState
{
/// What the kinds are called in a state.
constexpr std::array<const char*, 2> kKinds = {"SOLA", "NOVA"};

/// The text key of a picture under which its state stands.
QString stateKey();

/// Gives the picture the program and the state as texts. A picture without results stays as it is.
void sign(QImage& image, const SPictureState& state);

/// The state as JSON text in ASCII, which survives in a picture's text as it is. Without a look it says less: what was done by hand cannot
/// be told from the window.
QByteArray toJson(const SPictureState& state);
} // namespace PictureState
