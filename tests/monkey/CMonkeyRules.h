#pragma once

#include <QSet>
#include <QString>

class CToolWindow;

/// What holds of the window after each event, whatever happened.
class CMonkeyRules
{
public:
    /// Shared keys: those that results of two sequences have.
    CMonkeyRules(CToolWindow& objTool, const QSet<QString>& setShared);

    /// The first rule that is broken, in words; null when all hold.
    QString broken();
    /// The same after the window has brought its controls into line with a frame that has just been painted.
    QString brokenWhenSettled();

private:
    QString brokenByHost() const;
    QString brokenByKeys();
    QString brokenByRanges() const;
    QString brokenBySliders() const;
    QString brokenByControls() const;
    QString brokenUnit(int nKind, const char* pBoxName) const;
    QString brokenByOpenGL() const;

    template <class T>
    T* get(const char* pName) const;
    int count(int nKind) const;
    bool isEnabled(const char* pName) const;
    /// Of the chosen sequence; -1 while there is none.
    int shownKind() const;

    CToolWindow& m_objTool;
    QSet<QString> m_setShared;
    QSet<QString> m_setTaken;       ///< shared keys that went with one of their results, and have not left the view since
    QSet<QString> m_setWithoutTile; ///< keys without a tile that are accounted for
    QSet<QString> m_setKeys;        ///< as of the last event
    bool m_bOutOfOrder = false;     ///< as of the last event
    bool m_bNOVAInFrame = false;    ///< as of the last event: NOVA tiles there, and seen by the last frame
};
