#pragma once

/// The last viewport and the last orthographic box that a view has set, for host code that must place something in them
/// without asking OpenGL. There is one record in the process. It only stores; nothing is compared and nothing sent to OpenGL.
class Singleton
{
public:
    int m_nX = 0; ///< viewport in window pixels, origin bottom left
    int m_nY = 0;
    int m_nWidth = 0;
    int m_nHeight = 0;
    double m_fLeft = 0.0; ///< box in scene units
    double m_fRight = 0.0;
    double m_fBottom = 0.0;
    double m_fTop = 0.0;
    double m_fNear = 0.0;
    double m_fFar = 0.0;

    /// The record, made by the first call and never destroyed.
    static Singleton* getInstance();

    void glViewport(int nX, int nY, int nWidth, int nHeight);
    void glOrtho(double fLeft, double fRight, double fBottom, double fTop, double fNear, double fFar);

    static Singleton* mpInstance; ///< null until the first getInstance()

private:
    Singleton() = default;
};
