#pragma once

#include <QObject>

/// Base of the objects that run a reconstruction; an analysis holds a pointer to the one that it feeds.
class ReconstructionBase : public QObject
{
    Q_OBJECT

public:
    explicit ReconstructionBase(QObject* pParent = nullptr);
    ~ReconstructionBase() override;
};
