#include "SequenceFiles.h"

namespace
{
QByteArray line(const char* pszKey, const QString& strValue)
{
    return strValue.isEmpty() ? QByteArray() : QByteArray(pszKey) + '=' + strValue.toUtf8() + '\n';
}
} // namespace

QByteArray SequenceFiles::clickInfo(const SClickText& click)
{
    QByteArray aText = click.m_strRemark.isEmpty() ? QByteArray() : "# " + click.m_strRemark.toUtf8() + '\n';
    aText += "[photographic image]\nField of View=13.6\n" + line("Image File", click.m_strImageFile) +
             "[structure image]\n[reference image]\n[luminescent image]\nField of View=13.6\n";
    aText += line("Image Subtype", click.m_bFluorescent ? QStringLiteral("fluorescent") : QStringLiteral("luminescent"));
    aText += line("Emission Filter", click.m_strEmission) + line("Excitation Filter", click.m_strExcitation);
    aText += line("FL x-spot", click.m_strSpotX) + line("FL y-spot", click.m_strSpotY) + line("Exposure Time", click.m_strExposure);
    return aText;
}

QByteArray SequenceFiles::sequenceInfo(const QString& strSequenceID, const QString& strSubject, const QString& strDateTime,
                                       const QStringList& lstClickNumbers)
{
    QByteArray aText = "[Sequence Information]\n" + line("Sequence", strSequenceID) + line("Subject", strSubject) +
                       line("Date Time", strDateTime) + "\n[Click Numbers]\n" + line("Count", QString::number(lstClickNumbers.size()));
    for (int nClick = 0; nClick < lstClickNumbers.size(); ++nClick)
    {
        aText += QByteArray::number(nClick + 1) + '=' + lstClickNumbers.at(nClick).toUtf8() + '\n';
    }
    return aText;
}

QString SequenceFiles::clickNumber(const QString& strSequenceID, int nClick)
{
    return QStringLiteral("%1_%2").arg(strSequenceID).arg(nClick, 3, 10, QLatin1Char('0'));
}

QByteArray SequenceFiles::indexEntry(const QString& strEntry, const QString& strMenuName)
{
    return '[' + strEntry.toUtf8() + "]\n" + line("MenuName", strMenuName) + line("FileName", strEntry + QLatin1String(".xml"));
}
