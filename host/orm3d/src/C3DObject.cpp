#include "C3DObject.h"

#include <utility>

long C3DSGNode::m_nObjectCount = 1;

C3DSGNode::~C3DSGNode() = default;

C3DObject::C3DObject(QString strName) : m_strName(std::move(strName)) {}

C3DObject::~C3DObject() = default;
