#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

/// One section of a settings text: a name and its keys with their values, in file order. A key occurs once.
class CPLSection
{
public:
    explicit CPLSection(const QString& strName);

    /// Puts the name into @p pstrName and returns 0; another value if there is nowhere to put it. The flag is not used.
    int getSectionName(QString* pstrName, bool bReserved) const;

    /// Puts the value of @p strKey into @p pstrValue and returns 0. Without such a key returns another value and leaves
    /// @p pstrValue as it was.
    int getValue(const QString& strKey, QString* pstrValue) const;

    /// The value of @p strKey; a null string where there is none.
    QString value(const QString& strKey) const;

    bool contains(const QString& strKey) const;
    QString name() const;
    QStringList keys() const; ///< in file order
    int keyCount() const;

    /// Appends a key, or replaces the value of one that is there, in its place.
    void setValue(const QString& strKey, const QString& strValue);

private:
    QString m_strName;
    QVector<QString> m_vecKeys;
    QVector<QString> m_vecValues;     ///< parallel to m_vecKeys
    QHash<QString, int> m_mapKeyRows; ///< position of a key in m_vecKeys
};
