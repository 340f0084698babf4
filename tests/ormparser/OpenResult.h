#pragma once

#include "CPLResultXMLWrapper.h"
#include "TestFiles.h"

/// A document with the section First/Second, which is the current one once it is open.
class OpenResult : public CPLResultXMLWrapper
{
public:
    bool open(const TestFiles& objFiles, const QByteArray& baDocument)
    {
        return loadXMLFile(objFiles.write("result.xml", baDocument)) && openSection("First", "Second");
    }
    /// The key of the row at the index; a null string if it cannot be read.
    QString row(int nIndex, const QString& strTag = "Row", const QString& strKey = "Key")
    {
        QString strValue;
        return ReadCurrentKeyValues(nIndex, strTag, strKey, strValue) ? strValue : QString();
    }
};
