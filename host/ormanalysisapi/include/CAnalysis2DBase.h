#pragma once

#include <QString>
#include <QThread>

class COrmDataset;
class COrmSequenceDataset;
class QWidget;

/// Base of all analyses: a thread whose work is one reconstruction. The base reconstructs nothing.
class CAnalysis2DBase : public QThread
{
    Q_OBJECT

public:
    explicit CAnalysis2DBase(QObject* pParent = nullptr);
    ~CAnalysis2DBase() override;

    /// Calls doReconstruction() and returns.
    void run() override;

    /// The work of the analysis; false where it failed. The base has none: false.
    virtual bool doReconstruction();
    /// Takes the data of a sequence; false where the sequence does not serve. The base takes none: false.
    virtual bool loadSequence(COrmSequenceDataset* pSequence);
    /// Forgets what was loaded. Nothing in the base.
    virtual void reset();
    /// Saves the results under the name. Nothing in the base.
    virtual void saveAnalysisResults(QWidget* pParent, QString strName);
    /// Writes the dynamic range of an image; false, with the range untouched, where it has none. False in the base.
    virtual bool computeDynamicRange(COrmDataset* pDataset, float& fRange);
};
