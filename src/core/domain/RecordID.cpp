#include "RecordID.h"

#include <QRandomGenerator>

namespace fenrow::RecordID {

QUuid make()
{
    thread_local QRandomGenerator generator = QRandomGenerator::securelySeeded();
    const quint64 high = generator.generate64();
    const quint64 low = generator.generate64();
    QUuid id;
    id.data1 = uint(high >> 32);
    id.data2 = ushort(high >> 16);
    // Version 4 in the top nibble of the third field.
    id.data3 = ushort((high & 0x0fff) | 0x4000);
    for (int i = 0; i < 8; ++i)
        id.data4[i] = uchar(low >> (56 - 8 * i));
    // The RFC 4122 variant: the top two bits 10.
    id.data4[0] = uchar((id.data4[0] & 0x3f) | 0x80);
    return id;
}

} // namespace fenrow::RecordID
