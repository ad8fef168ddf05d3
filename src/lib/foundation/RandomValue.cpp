#include <foundation/RandomValue.h>

#include <QRandomGenerator>

namespace Orvex
{

quint64 getRandomValue()
{
    return QRandomGenerator::global()->generate64();
}

} // namespace Orvex
