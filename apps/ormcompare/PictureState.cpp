#include "PictureState.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace
{
/// Limits on what a picture may claim.
constexpr int kMaxBytes = 8'000'000;
constexpr int kMaxResults = 20'000;
constexpr int kMaxText = 4096;

constexpr std::array<const char*, 2> kKinds = {"SOLA", "NOVA"};

QJsonObject toObject(const SKindState& kind)
{
    return {{"unit", kind.m_strUnit}, {"colors", kind.m_strColors}, {"log", kind.m_bLog}, {"min", kind.m_fMin}, {"max", kind.m_fMax}};
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

bool isText(const QJsonValue& value)
{
    return value.isString() && value.toString().size() <= kMaxText;
}

/// A number that is one.
bool isNumber(const QJsonValue& value)
{
    return value.isDouble() && std::isfinite(value.toDouble());
}

bool readLook(const QJsonValue& value, QStringList& lstLook)
{
    const QJsonArray lstArguments = value.toArray();
    for (const QJsonValue& argument : lstArguments)
    {
        if (!isText(argument))
        {
            return false;
        }
        lstLook.append(argument.toString());
    }
    return value.isArray() && !lstLook.isEmpty();
}

bool readResults(const QJsonValue& value, QVector<SResultKey>& lstResults)
{
    const QJsonArray lstValues = value.toArray();
    for (const QJsonValue& result : lstValues)
    {
        const QString strKind = result[QLatin1String("kind")].toString();
        const bool bKind = strKind == QLatin1String(kKinds[0]) || strKind == QLatin1String(kKinds[1]);
        if (!bKind || !isText(result[QLatin1String("sequence")]) || !isText(result[QLatin1String("name")]) ||
            lstResults.size() >= kMaxResults)
        {
            return false;
        }
        lstResults.append({strKind, result[QLatin1String("sequence")].toString(), result[QLatin1String("name")].toString()});
    }
    return value.isArray();
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

bool readKinds(const QJsonValue& value, SPictureState& state)
{
    for (std::size_t nKind = 0; nKind < kKinds.size(); ++nKind)
    {
        const QJsonValue kind = value[QLatin1String(kKinds.at(nKind))];
        if (kind.isUndefined())
        {
            continue;
        }
        if (!isText(kind[QLatin1String("unit")]) || !isText(kind[QLatin1String("colors")]) || !kind[QLatin1String("log")].isBool() ||
            !isNumber(kind[QLatin1String("min")]) || !isNumber(kind[QLatin1String("max")]))
        {
            return false;
        }
        state.m_arrKinds.at(nKind) =
            SKindState{kind[QLatin1String("unit")].toString(), kind[QLatin1String("colors")].toString(),
                       kind[QLatin1String("log")].toBool(), kind[QLatin1String("min")].toDouble(), kind[QLatin1String("max")].toDouble()};
    }
    return value.isObject();
}
} // namespace

QString PictureState::softwareKey()
{
    return QStringLiteral("Software");
}

QString PictureState::stateKey()
{
    return QStringLiteral("OrmelleState");
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
    return plain(QJsonDocument(QJsonObject{{"version", state.m_strVersion},
                                           {"picture", state.m_strPicture},
                                           {"look", QJsonArray::fromStringList(state.m_lstLook)},
                                           {"results", toArray(state.m_lstResults)},
                                           {"refused", toArray(state.m_lstRefused)},
                                           {"kinds", kinds},
                                           {"mip", state.m_bMip},
                                           {"rotation", state.m_nRotation},
                                           {"wavelength", state.m_strWavelength},
                                           {"region", state.m_strRegion}})
                     .toJson(QJsonDocument::Compact));
}

QString PictureState::fromJson(const QByteArray& aJson, SPictureState& state)
{
    state = SPictureState();
    const QString strDamaged = QStringLiteral("its text on how it was made is damaged.");
    const QJsonDocument document = aJson.size() <= kMaxBytes ? QJsonDocument::fromJson(aJson) : QJsonDocument();
    const QJsonObject object = document.object();
    const QJsonValue rotation = object.value(QLatin1String("rotation"));
    for (const char* pszText : {"version", "picture", "wavelength", "region"})
    {
        if (!isText(object.value(QLatin1String(pszText))))
        {
            return strDamaged;
        }
    }
    if (!object.value(QLatin1String("mip")).isBool() || !isNumber(rotation) || std::abs(rotation.toDouble()) > 360.0 ||
        !readLook(object.value(QLatin1String("look")), state.m_lstLook) ||
        !readResults(object.value(QLatin1String("results")), state.m_lstResults) || state.m_lstResults.isEmpty() ||
        !readResults(object.value(QLatin1String("refused")), state.m_lstRefused) || !readKinds(object.value(QLatin1String("kinds")), state))
    {
        return strDamaged;
    }
    // Only what passed every check is taken over, the look among it by whoever uses it.
    SCompareOptions options;
    if (!CompareOptions::takeLook(state.m_lstLook, options).isEmpty())
    {
        return strDamaged;
    }
    state.m_strVersion = object.value(QLatin1String("version")).toString();
    state.m_strPicture = object.value(QLatin1String("picture")).toString();
    state.m_strWavelength = object.value(QLatin1String("wavelength")).toString();
    state.m_strRegion = object.value(QLatin1String("region")).toString();
    state.m_bMip = object.value(QLatin1String("mip")).toBool();
    state.m_nRotation = rotation.toInt();
    return {};
}

QString PictureState::fromFile(const QString& strFile, SPictureState& state)
{
    const auto refuse = [&strFile](const QString& strWhy) { return QStringLiteral("%1 cannot be repeated: %2").arg(strFile, strWhy); };
    if (!QFileInfo(strFile).isFile())
    {
        return refuse(QStringLiteral("there is no such file."));
    }
    QFile file(strFile);
    if (!file.open(QIODevice::ReadOnly))
    {
        return refuse(QStringLiteral("it cannot be read: %1.").arg(file.errorString()));
    }
    QImageReader reader(&file, "png");
    if (!reader.canRead() || !reader.size().isValid())
    {
        return refuse(QStringLiteral("it is no PNG picture."));
    }
    const QString strState = reader.text(stateKey());
    if (strState.isEmpty())
    {
        return refuse(QStringLiteral("it does not say how it was made."));
    }
    const QString strWrong = fromJson(strState.toUtf8(), state);
    return strWrong.isEmpty() ? QString() : refuse(strWrong);
}
