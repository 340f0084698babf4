#include "Singleton.h"

#include <mutex>

Singleton* Singleton::mpInstance = nullptr;

Singleton* Singleton::getInstance()
{
    static std::once_flag flagMade;
    std::call_once(flagMade, [] { mpInstance = new Singleton; });
    return mpInstance;
}

void Singleton::glViewport(int nX, int nY, int nWidth, int nHeight)
{
    m_nX = nX;
    m_nY = nY;
    m_nWidth = nWidth;
    m_nHeight = nHeight;
}

void Singleton::glOrtho(double fLeft, double fRight, double fBottom, double fTop, double fNear, double fFar)
{
    m_fLeft = fLeft;
    m_fRight = fRight;
    m_fBottom = fBottom;
    m_fTop = fTop;
    m_fNear = fNear;
    m_fFar = fFar;
}
