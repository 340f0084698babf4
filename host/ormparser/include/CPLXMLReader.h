#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

class COrmXMLSection;

/// One result document in memory, addressed by first and second tag.
///
/// The document is read whole into one buffer and passed over once: that pass finds everything that makes a document unreadable
/// (a document type declaration, a limit exceeded, a wrong encoding, anything not well-formed) and where the second tags lie. What is
/// inside a second tag is parsed a few rows at a time when it is asked for, so that a document costs little more than its own size
/// however many elements it has; long texts are never copied.
class CPLXMLReader
{
public:
    CPLXMLReader();
    ~CPLXMLReader();
    CPLXMLReader(const CPLXMLReader&) = delete;
    CPLXMLReader& operator=(const CPLXMLReader&) = delete;

    /// Reads a file. On failure returns false, holds no document, and gives the reason with file and place in @p strError; the
    /// reason is in the log then.
    bool loadFile(const QString& strFile, QString& strError);

    /// The same for a document in memory; @p strPlace is what messages call it.
    bool loadText(const QByteArray& baText, const QString& strPlace, QString& strError);

    void close(); ///< forgets the document
    bool isOpen() const;
    QString fileName() const; ///< of the document last loaded, or its place
    QString version() const;  ///< attribute "Version" of the outermost tag, as it stands; a null string where there is none

    /// The first second tag of that name in the first first tag of that name, or null. It belongs to this object and is valid until
    /// the document is closed or another one loaded.
    COrmXMLSection* section(const QString& strFirst, const QString& strSecond);

private:
    struct SDocument;

    std::unique_ptr<SDocument> m_pDocument;
    QString m_strFile;
};
