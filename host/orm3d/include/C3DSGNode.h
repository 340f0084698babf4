#pragma once

/// A node of the scene graph. Nodes and the voxels of volumes are numbered through the whole process: whoever needs a number takes the
/// counter's value and raises it by one. A number serves as OpenGL name in selection passes, where 0 stands for no name: the first one
/// is 1.
class C3DSGNode
{
public:
    static long m_nObjectCount; ///< the next free number

    virtual ~C3DSGNode();

protected:
    C3DSGNode() = default;
    C3DSGNode(const C3DSGNode&) = default;
    C3DSGNode& operator=(const C3DSGNode&) = default;
};
