#include "Platform/macOS/PropertyList.h"

#include "Platform/macOS/FoundationValues.h"

QVariant propertyList(const QByteArray &data)
{
    @autoreleasepool {
        NSData *bytes = [NSData dataWithBytes:data.constData()
                                       length:static_cast<NSUInteger>(data.size())];
        return valueOf([NSPropertyListSerialization propertyListWithData:bytes
                                                                 options:0
                                                                  format:nullptr
                                                                   error:nullptr]);
    }
}
