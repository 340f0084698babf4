#pragma once

#include "OrmDocumentLimits.h"
#include "OrmXmlLayoutBuilder.h"

#include <QString>
#include <array>
#include <string_view>

/// The one forward pass over a document: finds whatever makes it unreadable and where its sections and rows lie. It uses no recursion, no
/// memory that grows with what the document merely claims, and time in proportion to the bytes.
///
/// Refused are: another encoding than UTF-8, characters that XML does not allow, a document type declaration, whatever exceeds
/// OrmDocumentLimits, anything not well-formed, and another outermost tag than that of a result.
class OrmXmlScanner
{
public:
    OrmXmlScanner(const char* pText, qint64 nLength, SXmlLayout& objLayout);

    /// On failure returns false; error() says why and where, and the layout is of no use.
    bool scan();
    QString error() const;

private:
    bool scanProlog();
    bool scanDeclaration();
    bool scanOutside();
    bool scanText();
    bool scanMarkup();
    bool scanStartTag();
    bool scanAttribute();
    bool scanEndTag();
    bool scanComment();
    bool scanInstruction();
    bool scanCData();
    bool scanReference(const char*& p);
    bool scanName(std::string_view& strName);
    bool skipUntil(const char* pFrom, std::string_view strEnd, const char*& pFound);
    void skipBlanks();
    bool isNewAttribute(std::string_view strName);
    bool checkCharacters(const char* pTo);
    void noteLongText(const char* pFrom, const char* pTo, bool bText);
    bool finish();

    bool fail(const QString& strReason, const char* pWhere);
    bool failEnd();
    void setError(const QString& strReason, const char* pWhere);
    SXmlRange range(const char* pFrom, const char* pTo) const;

    const char* m_pBegin;
    const char* m_pEnd;
    const char* m_p;          ///< what comes next
    const char* m_pChecked;   ///< up to here the characters are good
    const char* m_pLastAlive; ///< where the progress display was last given a chance
    OrmXmlLayoutBuilder m_objBuilder;
    QString m_strError;

    std::array<std::string_view, OrmDocumentLimits::nXmlDepth + 1> m_aOpenTags; ///< by depth
    int m_nDepth = 0;                                                           ///< of the element that is open; 0: none
    bool m_bRootSeen = false;
    std::string_view m_strRoot;
    qint64 m_nElements = 0;

    static constexpr size_t nNameSlots = 1024;
    std::array<std::string_view, OrmDocumentLimits::nXmlAttributes> m_aAttributes; ///< names in the start tag being read
    std::array<quint16, nNameSlots> m_aNameSlots = {};                             ///< hash table of them: position + 1; 0: free
    int m_nAttributes = 0;
};
