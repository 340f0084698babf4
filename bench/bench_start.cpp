// From the order to open the tool's window to its first frame on the screen: the counter "of_empty" is that time over the same for a window
// of the same size that holds nothing but an empty OpenGL widget. Needs a display, a virtual one will do.

#include "BenchDisplay.h"
#include "BenchRatio.h"
#include "LongitudinalStudyBrowserView.h"
#include "LongitudinalStudyBrowserWnd.h"

#include <benchmark/benchmark.h>

#include <QOpenGLWidget>
#include <QVBoxLayout>

#include <GL/gl.h>

namespace
{
constexpr int g_nWarmUps = 2;

class CEmptyView : public QOpenGLWidget
{
public:
    using QOpenGLWidget::QOpenGLWidget;

protected:
    void paintGL() override
    {
        glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }
};

void openTool(QSize& objSize)
{
    CLongitudinalStudyBrowserWnd objWindow(nullptr);
    BenchDisplay::untilShown(*objWindow.findChild<CLongitudinalStudyBrowserView*>(), [&] { objWindow.show(); });
    objSize = objWindow.size();
}

void openEmptyWindow(const QSize& objSize)
{
    QWidget objWindow;
    auto* pView = new CEmptyView(&objWindow);
    (new QVBoxLayout(&objWindow))->addWidget(pView);
    objWindow.resize(objSize);
    BenchDisplay::untilShown(*pView, [&] { objWindow.show(); });
}

void firstFrame(benchmark::State& state)
{
    QSize objSize;
    openTool(objSize);
    BenchRatio::compare(
        state, "of_empty", [&objSize] { openTool(objSize); }, [&objSize] { openEmptyWindow(objSize); }, g_nWarmUps);
}
} // namespace

BENCHMARK(firstFrame)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    return BenchDisplay::run(argc, argv);
}
