#include "dbus/introspection.h"

#include <gtest/gtest.h>

#include <random>

using brindle::BusMember;
using brindle::ReadIntrospection;

namespace {

// "interface.name(in,in)out" and "interface.name:type", one behind the other.
std::string Shown(const std::vector<BusMember>& members) {
  std::string text;
  for (const BusMember& member : members) {
    text += (text.empty() ? "" : " ") + member.interface + "." + member.name;
    if (member.isProperty) {
      text += ":" + member.out;
      continue;
    }
    text += "(";
    for (std::size_t i = 0; i < member.in.size(); ++i)
      text += (i > 0 ? "," : "") + member.in[i];
    text += ")" + member.out;
  }
  return text;
}

constexpr const char* kUsual = R"(<!DOCTYPE node PUBLIC "-//freedesktop//DTD D-BUS Object Introspection 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd">
<?xml version="1.0"?>
<!-- <node><interface name="x"><method name="No"/></interface></node> > -->
<node>
 <interface name="org.freedesktop.DBus.Properties">
  <method name="Get"><arg direction="in" type="s"/><arg type='s'/><arg direction="out" type="v"/></method>
 </interface>
 <interface name="a.B">
  <method name="One"/>
  <method name="Two">
   <annotation name="org.freedesktop.DBus.Method.NoReply" value="a &gt; b"/>
   <arg name="x" type="a{sv}" direction="in"></arg>
   <arg name="y > z" type="i" direction="out"/>
   <arg type="s" direction="out"/>
  </method>
  <signal name="Changed"><arg type="s"/></signal>
  <property name="Level" type="d" access="readwrite"><annotation name="n" value="v"/></property>
 </interface>
 <interface name="a.C"><property type="s" access="read" name="Na&amp;me"/></interface>
 <node name="child"/>
 <node name="other"><interface name="a.B"><method name="Inner"/></interface></node>
 <interface name="a.D"><method name="Last"></method></interface>
</node>)";

TEST(Introspection, members_come_in_order_and_those_that_all_objects_have_last) {
  EXPECT_EQ(Shown(ReadIntrospection(kUsual, "")), "a.B.One() a.B.Two(a{sv})is a.B.Level:d a.C.Na&me:s a.D.Last() "
                                                  "org.freedesktop.DBus.Properties.Get(s,s)v");
}

TEST(Introspection, one_interface_is_taken_alone) {
  EXPECT_EQ(Shown(ReadIntrospection(kUsual, "a.C")), "a.C.Na&me:s");
  EXPECT_EQ(Shown(ReadIntrospection(kUsual, "a.c")), "");
  EXPECT_EQ(Shown(ReadIntrospection(kUsual, "org.freedesktop.DBus.Properties")),
            "org.freedesktop.DBus.Properties.Get(s,s)v");
}

TEST(Introspection, texts_that_are_cut_off_give_what_came_before) {
  const std::string whole = kUsual;
  for (std::size_t length = 0; length <= whole.size(); ++length)
    EXPECT_LE(ReadIntrospection(std::string_view(whole).substr(0, length), "").size(), 6U);
}

TEST(Introspection, noise_is_read_to_its_end) {
  const std::string pieces[] = {"<node",
                                ">",
                                "<interface name=\"a.B\"",
                                "/>",
                                "<method name='",
                                "\"",
                                "'",
                                "<arg ",
                                "=",
                                "type=\"",
                                "</node>",
                                "</interface>",
                                "<!--",
                                "-->",
                                "<",
                                "&amp",
                                "\n",
                                "</"};
  std::mt19937 random(1);
  for (int round = 0; round < 5000; ++round) {
    std::string text = "<node>";
    for (int i = 0; i < 30; ++i)
      text += pieces[random() % std::size(pieces)];
    (void)ReadIntrospection(text, "");
  }
}

} // namespace
