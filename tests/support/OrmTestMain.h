#pragma once

#include "COrmPreference.h"
#include "CSOLAView.h"

#include <QApplication>
#include <QtTest>

/// Runs a test object in an application like Ormelle's: the surface format of the 3D views is the default one before the
/// application is made, pixels aren't scaled, and preferences live in memory alone.
template <class T>
int runOrmTest(int nArguments, char** ppArguments)
{
    CSOLAView::setDefaultFormat();
    QApplication objApplication(nArguments, ppArguments);
    COrmPreference::setStore(QString());
    T objTest;
    return QTest::qExec(&objTest, nArguments, ppArguments);
}

#define ORM_TEST_MAIN(TestClass)                                                                                                           \
    int main(int nArguments, char** ppArguments)                                                                                           \
    {                                                                                                                                      \
        return runOrmTest<TestClass>(nArguments, ppArguments);                                                                             \
    }
