#include "arrowplacer.h"

#include "ivrcheck.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QtMath>

namespace {

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

QRectF boxOf(const VorelModule *module)
{
    return QRectF(module->Left(), module->Top(), module->Width(), module->Height());
}

} // namespace

QLineF ArrowPlacer::edgeToEdge(const QRectF &from, const QRectF &to)
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
