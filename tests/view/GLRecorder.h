#pragma once

// A record of OpenGL calls: the program that includes this stands before the library, writes down what passes and hands it on. For one
// source of a program only.

#include <QString>
#include <QStringList>

#include <dlfcn.h>

#include <GL/gl.h>

namespace
{
bool s_bRecording = false;
QStringList s_lstCalls;

void record(const QString& strCall)
{
    if (s_bRecording)
    {
        s_lstCalls.append(strCall);
    }
}

template <class Function>
Function* library(const char* pszName)
{
    void* pFunction = dlsym(RTLD_NEXT, pszName);
    if (!pFunction)
    {
        qFatal("OpenGL has no %s", pszName);
    }
    return reinterpret_cast<Function*>(pFunction);
}

QString number(double fValue)
{
    return QString::number(fValue, 'g', 7);
}
} // namespace

#define HANDED_ON(name) static auto* const s_pNext = library<decltype(::name)>(#name)

extern "C"
{
    void glClear(GLbitfield eMask)
    {
        HANDED_ON(glClear);
        record(QStringLiteral("clear %1").arg(eMask, 0, 16));
        s_pNext(eMask);
    }
    void glPushAttrib(GLbitfield eMask)
    {
        HANDED_ON(glPushAttrib);
        record(QStringLiteral("push %1").arg(eMask, 0, 16));
        s_pNext(eMask);
    }
    void glPopAttrib()
    {
        HANDED_ON(glPopAttrib);
        record(QStringLiteral("pop"));
        s_pNext();
    }
    void glEnable(GLenum eCap)
    {
        HANDED_ON(glEnable);
        record(QStringLiteral("enable %1").arg(eCap, 0, 16));
        s_pNext(eCap);
    }
    void glDisable(GLenum eCap)
    {
        HANDED_ON(glDisable);
        record(QStringLiteral("disable %1").arg(eCap, 0, 16));
        s_pNext(eCap);
    }
    void glDepthFunc(GLenum eFunc)
    {
        HANDED_ON(glDepthFunc);
        record(QStringLiteral("depthfunc %1").arg(eFunc, 0, 16));
        s_pNext(eFunc);
    }
    void glBlendFunc(GLenum eSource, GLenum eTarget)
    {
        HANDED_ON(glBlendFunc);
        record(QStringLiteral("blendfunc %1 %2").arg(eSource, 0, 16).arg(eTarget, 0, 16));
        s_pNext(eSource, eTarget);
    }
    void glShadeModel(GLenum eModel)
    {
        HANDED_ON(glShadeModel);
        record(QStringLiteral("shade %1").arg(eModel, 0, 16));
        s_pNext(eModel);
    }
    void glFlush()
    {
        HANDED_ON(glFlush);
        record(QStringLiteral("flush"));
        s_pNext();
    }
    void glViewport(GLint nX, GLint nY, GLsizei nWidth, GLsizei nHeight)
    {
        HANDED_ON(glViewport);
        record(QStringLiteral("viewport %1 %2 %3 %4").arg(nX).arg(nY).arg(nWidth).arg(nHeight));
        s_pNext(nX, nY, nWidth, nHeight);
    }
    void glOrtho(GLdouble fLeft, GLdouble fRight, GLdouble fBottom, GLdouble fTop, GLdouble fNear, GLdouble fFar)
    {
        HANDED_ON(glOrtho);
        record(QStringLiteral("ortho %1 %2 %3 %4 %5 %6")
                   .arg(number(fLeft), number(fRight), number(fBottom), number(fTop), number(fNear), number(fFar)));
        s_pNext(fLeft, fRight, fBottom, fTop, fNear, fFar);
    }
    void glRotatef(GLfloat fAngle, GLfloat fX, GLfloat fY, GLfloat fZ)
    {
        HANDED_ON(glRotatef);
        record(QStringLiteral("rotate %1 %2 %3 %4").arg(number(fAngle), number(fX), number(fY), number(fZ)));
        s_pNext(fAngle, fX, fY, fZ);
    }
    void glTranslatef(GLfloat fX, GLfloat fY, GLfloat fZ)
    {
        HANDED_ON(glTranslatef);
        record(QStringLiteral("translate %1 %2 %3").arg(number(fX), number(fY), number(fZ)));
        s_pNext(fX, fY, fZ);
    }
    void glColorMaterial(GLenum eFace, GLenum eMode)
    {
        HANDED_ON(glColorMaterial);
        record(QStringLiteral("colormaterial %1 %2").arg(eFace, 0, 16).arg(eMode, 0, 16));
        s_pNext(eFace, eMode);
    }
    void glColor3f(GLfloat fRed, GLfloat fGreen, GLfloat fBlue)
    {
        HANDED_ON(glColor3f);
        record(QStringLiteral("color %1 %2 %3").arg(number(fRed), number(fGreen), number(fBlue)));
        s_pNext(fRed, fGreen, fBlue);
    }
    void glLineWidth(GLfloat fWidth)
    {
        HANDED_ON(glLineWidth);
        record(QStringLiteral("linewidth %1").arg(number(fWidth)));
        s_pNext(fWidth);
    }
    void glLineStipple(GLint nFactor, GLushort nPattern)
    {
        HANDED_ON(glLineStipple);
        record(QStringLiteral("stipple %1 %2").arg(nFactor).arg(nPattern, 0, 16));
        s_pNext(nFactor, nPattern);
    }
    void glBegin(GLenum eMode)
    {
        HANDED_ON(glBegin);
        record(QStringLiteral("begin %1").arg(eMode, 0, 16));
        s_pNext(eMode);
    }
    void glDrawElements(GLenum eMode, GLsizei nCount, GLenum eType, const void* pIndexes)
    {
        HANDED_ON(glDrawElements);
        record(QStringLiteral("elements %1").arg(eMode, 0, 16));
        s_pNext(eMode, nCount, eType, pIndexes);
    }
    void glDrawArrays(GLenum eMode, GLint nFirst, GLsizei nCount)
    {
        HANDED_ON(glDrawArrays);
        record(QStringLiteral("arrays %1").arg(eMode, 0, 16));
        s_pNext(eMode, nFirst, nCount);
    }
}
