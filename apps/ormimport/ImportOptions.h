#pragma once

#include "CommandLine.h"
#include "SOpenVolume.h"

#include <QDate>
#include <QString>
#include <QStringList>

/// What was asked for on the command line.
struct SImportOptions : SUsualOptions
{
    QString m_strSurface; ///< file
    QString m_strVolume;  ///< file
    bool m_bNova = false; ///< kind
    QString m_strSubject;
    QDate m_date;                      ///< of the time point
    QString m_strSequence;             ///< ID; made of subject, date and kind where none was given
    QString m_strName;                 ///< of the result; the volume's file name where none was given
    QStringList m_lstMaps;             ///< NAME or PROPERTY=NAME; empty: all maps of the surface
    QString m_strUnit;                 ///< as the tool writes it
    QString m_strUnitValue;            ///< stored amount per cell or unit of dye, as text; empty: none
    double m_fDivisor = 1.0;           ///< what stored amounts are divided by to be shown in the unit
    bool m_bAsStored = false;          ///< the volume's numbers are stored amounts, not amounts in the unit
    double m_fSurfaceUnit = 1.0;       ///< mm per unit of the surface's coordinates
    ESpace m_eSpace = ESpace::Unknown; ///< of the surface's coordinates
    double m_fVoxelSize = 0.0;         ///< mm; 0: that of the volume
    QString m_strEmission;             ///< nm; may be empty
    QString m_strExcitation;           ///< nm; may be empty
    QString m_strOut;                  ///< study folder
};

namespace ImportOptions
{
/// Reads the command line. An empty text, or what is wrong with it.
QString read(const QStringList& lstArguments, SImportOptions& options);
QString help();
} // namespace ImportOptions
