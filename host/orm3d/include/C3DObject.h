#pragma once

#include "C3DSGNode.h"

#include <QString>

/// What mesh and volume have in common.
class C3DObject : public C3DSGNode
{
public:
    ~C3DObject() override;

    bool m_bShown = true;     ///< a hidden object is neither drawn nor named in a selection pass
    bool m_bAnchored = false; ///< stays where the view's own matrices place it

    void show(bool bShow) { m_bShown = bShow; }
    /// Objects carry no matrix of their own, so that an object is drawn in the same place either way.
    void setAnchor(bool bAnchor) { m_bAnchored = bAnchor; }

    const QString& name() const { return m_strName; }

protected:
    explicit C3DObject(QString strName);
    C3DObject(const C3DObject&) = default;
    C3DObject& operator=(const C3DObject&) = default;

private:
    QString m_strName; ///< as given to the constructor
};
