#include "PictureReader.h"

#include "CompareOptions.h"

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

using PictureState::kKinds;

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
            !kind[QLatin1String("reversed")].isBool() || !isNumber(kind[QLatin1String("min")]) || !isNumber(kind[QLatin1String("max")]))
        {
            return false;
        }
        state.m_arrKinds.at(nKind) = SKindState{kind[QLatin1String("unit")].toString(),   kind[QLatin1String("colors")].toString(),
                                                kind[QLatin1String("reversed")].toBool(), kind[QLatin1String("log")].toBool(),
                                                kind[QLatin1String("min")].toDouble(),    kind[QLatin1String("max")].toDouble()};
    }
    return value.isObject();
}
} // namespace

QString PictureReader::fromJson(const QByteArray& aJson, SPictureState& state)
{
    state = SPictureState();
    const QString strDamaged = QStringLiteral("its text on how it was made is damaged.");
    const QJsonDocument document = aJson.size() <= kMaxBytes ? QJsonDocument::fromJson(aJson) : QJsonDocument();
    const QJsonObject object = document.object();
    if (object.contains(QLatin1String("results")) && !object.contains(QLatin1String("look")))
    {
        return QStringLiteral("it was exported from a window by hand; only pictures that ormcompare wrote can be made again.");
    }
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

QString PictureReader::fromFile(const QString& strFile, SPictureState& state)
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
    const QString strState = reader.text(PictureState::stateKey());
    if (strState.isEmpty())
    {
        return refuse(QStringLiteral("it does not say how it was made."));
    }
    const QString strWrong = fromJson(strState.toUtf8(), state);
    return strWrong.isEmpty() ? QString() : refuse(strWrong);
}
