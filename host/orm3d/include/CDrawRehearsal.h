#pragma once

/// While one exists, meshes and volumes draw nothing. A view that wants to know what a frame decides - its layout, its ranges - without
/// anybody looking at it rehearses the frame so, at no more than the cost of deciding. Selection passes stay what they are. GUI thread
/// only.
class CDrawRehearsal
{
public:
    CDrawRehearsal() { ++s_nUnderWay; }
    ~CDrawRehearsal() { --s_nUnderWay; }
    CDrawRehearsal(const CDrawRehearsal&) = delete;
    CDrawRehearsal& operator=(const CDrawRehearsal&) = delete;

    static bool isUnderWay() { return s_nUnderWay > 0; }

private:
    static int s_nUnderWay;
};
