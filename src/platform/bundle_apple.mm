#include "platform/bundle.h"

#include <QCoreApplication>

#import <Foundation/Foundation.h>

namespace zenvor {

namespace {

// Info.plist can hold a number where a text is expected.
std::optional<QString> textOf(id value)
{
    if (![value isKindOfClass:[NSString class]])
        return std::nullopt;
    return QString::fromNSString(static_cast<NSString *>(value));
}

} // namespace

Bundle Bundle::main()
{
    @autoreleasepool {
        NSBundle *const mainBundle = [NSBundle mainBundle];
        Bundle bundle;
        bundle.m_identifier = textOf([mainBundle bundleIdentifier]);
        bundle.m_version = textOf([[mainBundle infoDictionary] objectForKey:@"CFBundleShortVersionString"]);
        bundle.m_build = textOf([[mainBundle infoDictionary] objectForKey:@"CFBundleVersion"]);
        bundle.m_organizationDomain = QCoreApplication::organizationDomain();
        return bundle;
    }
}

} // namespace zenvor
