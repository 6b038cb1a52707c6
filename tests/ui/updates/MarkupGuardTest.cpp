#include "ui/updates/MarkupGuard.h"

#include <QString>

#include <gtest/gtest.h>

namespace tallyfold {

TEST(MarkupGuard, OrdinaryMarkupMayPass)
{
    EXPECT_EQ(markupFaultOf(u""), std::nullopt);
    EXPECT_EQ(markupFaultOf(u"<?xml version='1.0'?><!-- <!DOCTYPE a> --><a b='>' c=\"<!-- '\">d &amp; "
                            u"e<![CDATA[<!DOCTYPE html> & <]]></a>"),
              std::nullopt);
    EXPECT_EQ(markupFaultOf(u"<a><!-- never ends"), std::nullopt);
}

TEST(MarkupGuard, DocumentTypesAreFoundWhereverTheyStand)
{
    EXPECT_EQ(markupFaultOf(u"<!DOCTYPE a><a/>"), AppcastFault::doctype);
    EXPECT_EQ(markupFaultOf(u"<?xml version='1.0'?><!-- a --> <!DOCTYPE a [<!ENTITY b 'c'>]><a/>"),
              AppcastFault::doctype);
    EXPECT_EQ(markupFaultOf(u"<a/><!DOCTYPE a>"), AppcastFault::doctype);
    EXPECT_EQ(markupFaultOf(u"<a><!ELEMENT b></a>"), AppcastFault::doctype);
}

TEST(MarkupGuard, LongTagsAndNamesMayNotPass)
{
    const QString name(4'000, u'n');
    EXPECT_EQ(markupFaultOf(QString(u'<' + name + u'>')), AppcastFault::tooLong);
    EXPECT_EQ(markupFaultOf(QString(QStringLiteral("</") + name + u'>')), AppcastFault::tooLong);
    EXPECT_EQ(markupFaultOf(QString(QStringLiteral("<?") + name + QStringLiteral("?>"))),
              AppcastFault::tooLong);
    EXPECT_EQ(markupFaultOf(QString(QStringLiteral("<a b='") + name + QStringLiteral("'/>"))),
              AppcastFault::tooLong);
    EXPECT_EQ(markupFaultOf(QString(u'&' + name + u';')), AppcastFault::malformed);
    EXPECT_EQ(markupFaultOf(u"<a b='&'/>"), AppcastFault::malformed);
    EXPECT_EQ(markupFaultOf(u"<a b='"), AppcastFault::malformed);
}

TEST(MarkupGuard, ManyNamespacesMayNotPass)
{
    EXPECT_EQ(markupFaultOf(QString(QStringLiteral("<a xmlns:b='c'>").repeated(200))), AppcastFault::tooLong);
}

} // namespace tallyfold
