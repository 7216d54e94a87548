#include "arrowplacer.h"

#include "ivrcheck.h"
#include "twips.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QLineF>
#include <QRectF>
#include <QtMath>

namespace {

// Half the side of the square box of a loop, in twips.
constexpr float LoopReach = 300.0f;

// The part of the segment from a box's centre that lies inside the box, as a
// fraction of the segment: where the ray leaves through the nearer side.
qreal insideFraction(const QRectF &box, QPointF d)
{
    qreal t = 1.0;
    if (!qFuzzyIsNull(d.x()))
        t = qMin(t, box.width() / 2 / qAbs(d.x()));
    if (!qFuzzyIsNull(d.y()))
        t = qMin(t, box.height() / 2 / qAbs(d.y()));
    return t;
}

// Where the module is shown: a position far off the canvas is shown at the
// edge of what can be drawn, and its arrows lead there.
QRectF boxOf(const VorelModule *module)
{
    return QRectF(Twips::bounded(module->Left()),
                  Twips::bounded(module->Top()),
                  module->Width(),
                  module->Height());
}

// The segment between the centres of two boxes, clipped to both, in twips.
// Boxes that overlap give the unclipped segment.
QLineF edgeToEdge(const QRectF &from, const QRectF &to)
{
    const QPointF a = from.center();
    const QPointF b = to.center();
    const QPointF d = b - a;
    const qreal leave = insideFraction(from, d);
    const qreal enter = insideFraction(to, d);
    if (leave + enter >= 1.0)
        return QLineF(a, b);
    return QLineF(a + d * leave, b - d * enter);
}

} // namespace

void ArrowPlacer::Place(VorelModule *fromModule, VorelModule *toModule, VorelDirection *arrow)
{
    IVR_CHECK(fromModule && toModule && arrow, return );
    if (fromModule == toModule) {
        const QRectF box = boxOf(fromModule);
        arrow->reshape(float(box.right()) - LoopReach,
                       float(box.top()) - LoopReach,
                       2 * LoopReach,
                       2 * LoopReach,
                       VorelDirection::Loop);
        return;
    }
    const QLineF line = edgeToEdge(boxOf(fromModule), boxOf(toModule));
    arrow->setLine(line.p1(), line.p2());
}
