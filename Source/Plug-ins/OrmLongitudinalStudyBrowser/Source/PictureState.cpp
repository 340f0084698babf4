#include "PictureState.h"

#include <QCoreApplication>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
QJsonObject toObject(const SKindState& kind)
{
    return {{"unit", kind.m_strUnit}, {"colors", kind.m_strColors}, {"reversed", kind.m_bReversed},
            {"log", kind.m_bLog},     {"min", kind.m_fMin},         {"max", kind.m_fMax}};
}

/// The same JSON in characters that every reader of pictures hands on as they are: ASCII, without two blanks in a row, which some make one.
QByteArray plain(const QByteArray& aJson)
{
    QByteArray aPlain;
    for (const QChar character : QString::fromUtf8(aJson))
    {
        const bool bSecondBlank = character == QLatin1Char(' ') && aPlain.endsWith(' ');
        if (bSecondBlank || character.unicode() > 126)
        {
            aPlain += "\\u" + QByteArray::number(character.unicode(), 16).rightJustified(4, '0');
        }
        else
        {
            aPlain += character.toLatin1();
        }
    }
    return aPlain;
}

QJsonArray toArray(const QVector<SResultKey>& lstResults)
{
    QJsonArray array;
    for (const SResultKey& result : lstResults)
    {
        array.append(QJsonObject{{"kind", result.m_strKind}, {"sequence", result.m_strSequence}, {"name", result.m_strName}});
    }
    return array;
}
} // namespace

QString PictureState::stateKey()
{
    return QStringLiteral("OrmelleState");
}

void PictureState::sign(QImage& image, const SPictureState& state)
{
    if (image.isNull() || state.m_lstResults.isEmpty())
    {
        return;
    }
    image.setText(QStringLiteral("Software"), QCoreApplication::applicationName() + QLatin1Char(' ') + state.m_strVersion);
    image.setText(stateKey(), QString::fromUtf8(toJson(state)));
}

QByteArray PictureState::toJson(const SPictureState& state)
{
    QJsonObject kinds;
    for (std::size_t nKind = 0; nKind < kKinds.size(); ++nKind)
    {
        if (state.m_arrKinds.at(nKind))
        {
            kinds.insert(QLatin1String(kKinds.at(nKind)), toObject(*state.m_arrKinds.at(nKind)));
        }
    }
    QJsonObject object{
        {"version", state.m_strVersion}, {"picture", state.m_strPicture}, {"results", toArray(state.m_lstResults)}, {"kinds", kinds},
        {"mip", state.m_bMip},           {"rotation", state.m_nRotation}};
    if (!state.m_lstLook.isEmpty())
    {
        object.insert(QLatin1String("look"), QJsonArray::fromStringList(state.m_lstLook));
        object.insert(QLatin1String("refused"), toArray(state.m_lstRefused));
        object.insert(QLatin1String("wavelength"), state.m_strWavelength);
        object.insert(QLatin1String("region"), state.m_strRegion);
    }
    return plain(QJsonDocument(object).toJson(QJsonDocument::Compact));
}
