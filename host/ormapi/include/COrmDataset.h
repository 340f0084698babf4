#pragma once

#include "SClickFacts.h"

#include <QObject>

/// One image (a click) of a sequence that is open in the host. Owned by its sequence.
class COrmDataset : public QObject
{
    Q_OBJECT

public:
    /// Field of view in cm of a click that gives none.
    static constexpr double s_fDefaultFOV = 13.6;

    explicit COrmDataset(const SClickFacts& sFacts, QObject* pParent = nullptr);
    ~COrmDataset() override;

    /// The click's name, which is also the name of its folder.
    QString getClickNumber() const { return m_sFacts.m_strClickNumber; }
    /// The click's folder, with its closing separator.
    QString getClickInfoPath() const { return m_sFacts.m_strFolder; }
    const SClickFacts& getFacts() const { return m_sFacts; }

    /// Works out the field of view from the click information; until then getImageFOV() gives the default.
    void calculateFOV();
    /// Width of the imaged area in cm; above 0.
    double getImageFOV() const { return m_fImageFOV; }

    /// Absolute path of the photograph that the click names, if it lies inside the click's folder; otherwise null.
    QString getPhotographFile() const;
    /// The same for the luminescent image.
    QString getLuminescentFile() const;

private:
    friend class COrmSequenceDataset;
    void setFacts(const SClickFacts& sFacts);

    SClickFacts m_sFacts;               ///< as read when the sequence was opened or last refreshed
    double m_fImageFOV = s_fDefaultFOV; ///< in cm
};
