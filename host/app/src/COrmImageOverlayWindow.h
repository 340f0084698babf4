#pragma once

#include <QImage>
#include <QPointer>
#include <QString>
#include <QWidget>

class COrmPictureWidget;
class COrmSequenceDataset;
class QComboBox;
class QLabel;
class QSlider;

/// The host's own tool "Image Overlay": the photograph of an image of the selected sequence, with its luminescent image over it.
class COrmImageOverlayWindow : public QWidget
{
    Q_OBJECT

public:
    explicit COrmImageOverlayWindow(QWidget* pParent = nullptr);

    /// What a command line or another tool calls it in every language; the window's object name.
    static QString toolName();
    /// The same for the user: the text of the menu entry and the beginning of the window's title.
    static QString title();
    /// Shows the sequence's images; null: asks for a selection.
    void setSequence(COrmSequenceDataset* pSequence);
    /// Copies the picture if the name is this window's, case aside.
    void copyToClipboard(const QString& strObjectName);

private:
    void loadImages();
    void showImages();

    QPointer<COrmSequenceDataset> m_pSequence;
    QComboBox* m_pImageCB;
    QSlider* m_pOpacitySlider;
    QLabel* m_pOpacityLabel;
    COrmPictureWidget* m_pPicture;
    QImage m_imgPhotograph;
    QImage m_imgLuminescent;
    bool m_bAsked = false; ///< setSequence() was called once
};
