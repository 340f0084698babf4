#include "COrmImageOverlayWindow.h"

#include "COrmDataset.h"
#include "COrmPictureWidget.h"
#include "COrmPlainText.h"
#include "COrmPlainTextDelegate.h"
#include "COrmSequenceDataset.h"
#include "OrmOverlay.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

COrmImageOverlayWindow::COrmImageOverlayWindow(QWidget* pParent)
    : QWidget(pParent, Qt::Window),
      m_pImageCB(new QComboBox(this)),
      m_pOpacitySlider(new QSlider(Qt::Horizontal, this)),
      m_pOpacityLabel(new QLabel(tr("&Opacity:"), this)),
      m_pPicture(new COrmPictureWidget(this))
{
    setObjectName(toolName());
    setWindowTitle(title());
    m_pImageCB->setObjectName(QStringLiteral("overlayImage"));
    m_pImageCB->setItemDelegate(new COrmPlainTextDelegate(m_pImageCB));
    m_pImageCB->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_pImageCB->setMinimumContentsLength(16);
    m_pOpacitySlider->setObjectName(QStringLiteral("overlayOpacity"));
    m_pOpacitySlider->setRange(0, 100);
    m_pOpacitySlider->setValue(70);
    m_pPicture->setObjectName(QStringLiteral("overlayPicture"));
    auto* pImageLabel = new QLabel(tr("&Image:"), this);
    pImageLabel->setBuddy(m_pImageCB);
    m_pOpacityLabel->setBuddy(m_pOpacitySlider);

    auto* pControls = new QHBoxLayout;
    pControls->addWidget(pImageLabel);
    pControls->addWidget(m_pImageCB, 1);
    pControls->addWidget(m_pOpacityLabel);
    pControls->addWidget(m_pOpacitySlider, 1);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addLayout(pControls);
    pLayout->addWidget(m_pPicture, 1);

    connect(m_pImageCB, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &COrmImageOverlayWindow::loadImages);
    connect(m_pOpacitySlider, &QSlider::valueChanged, this, &COrmImageOverlayWindow::showImages);
}

QString COrmImageOverlayWindow::toolName()
{
    return QStringLiteral("Image Overlay");
}

QString COrmImageOverlayWindow::title()
{
    return tr("Image Overlay");
}

void COrmImageOverlayWindow::setSequence(COrmSequenceDataset* pSequence)
{
    if (m_bAsked && m_pSequence == pSequence)
        return;
    m_bAsked = true;
    m_pSequence = pSequence;
    {
        const QSignalBlocker objBlocker(m_pImageCB);
        m_pImageCB->clear();
        if (pSequence != nullptr)
        {
            const QList<COrmDataset*> lstDatasets = pSequence->getDatasets();
            for (const COrmDataset* pDataset : lstDatasets)
                m_pImageCB->addItem(pDataset->getClickNumber());
        }
    }
    m_pImageCB->setEnabled(m_pImageCB->count() > 1);
    setWindowTitle(pSequence == nullptr ? title() : title() + QStringLiteral(" - ") + COrmPlainText::visible(pSequence->getSequenceID()));
    loadImages();
}

void COrmImageOverlayWindow::loadImages()
{
    m_imgPhotograph = QImage();
    m_imgLuminescent = QImage();
    const bool bOpen = m_pSequence && COrmSequenceDataset::getSequenceDataset(m_pSequence->getSequenceID()) == m_pSequence;
    const COrmDataset* pDataset = bOpen ? m_pSequence->getDatasets().value(m_pImageCB->currentIndex()) : nullptr;
    if (pDataset == nullptr)
        m_pPicture->setText(tr("Select a sequence in the list of the main window."));
    else
    {
        QString strReason;
        const QString strPhotograph = pDataset->getPhotographFile();
        const QString strLuminescent = pDataset->getLuminescentFile();
        if (!strPhotograph.isEmpty())
            m_imgPhotograph = OrmOverlay::load(strPhotograph, &strReason);
        if (!strLuminescent.isEmpty())
            m_imgLuminescent = OrmOverlay::load(strLuminescent, &strReason);
        m_pPicture->setText(strReason.isEmpty() ? tr("Image %1 has no picture.").arg(pDataset->getClickNumber()) : strReason);
    }
    showImages();
}

void COrmImageOverlayWindow::showImages()
{
    m_pOpacitySlider->setEnabled(!m_imgLuminescent.isNull());
    m_pOpacityLabel->setEnabled(!m_imgLuminescent.isNull());
    m_pPicture->setPicture(OrmOverlay::compose(m_imgPhotograph, m_imgLuminescent, m_pOpacitySlider->value() / 100.0));
}

void COrmImageOverlayWindow::copyToClipboard(const QString& strObjectName)
{
    if (strObjectName.compare(objectName(), Qt::CaseInsensitive) == 0 && !m_pPicture->picture().isNull())
        QApplication::clipboard()->setImage(m_pPicture->picture());
}
