#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "util/MessageNode.h"

using namespace orv::util;

namespace {

std::string g_heard;

std::string nameOf(MessageNode* node) {
  return node ? node->name() : "-";
}

/// Writes "receiver:id origin>sender>target" of each message to the log, b for a broadcast.
class Recorder : public MessageNode {
 public:
  using MessageNode::MessageNode;
  std::function<void(Message&)> then;

  void onMessage(Message& m, bool broadcast) override {
    g_heard += name() + ":" + std::to_string(m.id) + (broadcast ? "b " : " ") + nameOf(m.origin) +
               ">" + nameOf(m.sender) + ">" + nameOf(m.target) + "; ";
    if (then) then(m);
  }
};

std::string takeHeard() {
  return std::exchange(g_heard, {});
}

}  // namespace

TEST(MessageNode, LinksStandOnBothSidesAndTellTheSubject) {
  Recorder a("a"), b("b");
  EXPECT_TRUE(a.connect(&b));
  EXPECT_EQ(takeHeard(), "b:-1 a>a>-; ");
  EXPECT_TRUE(a.connect(&b));
  EXPECT_EQ(takeHeard(), "");
  EXPECT_TRUE(a.hasSubject(&b) && b.hasListener(&a) && !b.hasSubject(&a));
  EXPECT_TRUE(a.subject(0) == &b && !a.subject(-1) && !a.subject(1));
  b.then = [&](Message& m) { EXPECT_TRUE(b.hasListener(m.origin)); };  // the link still stands
  EXPECT_TRUE(a.disconnect(&b));
  EXPECT_EQ(takeHeard(), "b:-2 a>a>-; ");
  EXPECT_EQ(a.subjectCount() + b.listenerCount(), 0);
}

TEST(MessageNode, DeliveryRunsFromTheLastListenerAndPutsTheMessageBack) {
  Recorder hub("hub"), a("a"), b("b"), c("c"), far("far");
  for (Recorder* node : {&a, &b, &c}) node->connect(&hub);
  far.connect(&b);
  takeHeard();
  b.then = [&](Message& m) { b.broadcast(m); };  // passes it on, origin kept
  Message message(7, 1, 2);
  message.sender = &far;
  hub.postAll(message);
  EXPECT_EQ(takeHeard(), "c:7b hub>hub>c; b:7b hub>hub>b; far:7b hub>b>far; a:7b hub>hub>a; ");
  EXPECT_TRUE(!message.origin && message.sender == &far && !message.target);

  message.origin = &c;
  hub.send(&a, message);
  hub.post(&a, message);
  hub.post(nullptr, message);
  EXPECT_EQ(takeHeard(), "a:7 c>hub>-; a:7 hub>hub>-; ");
  EXPECT_EQ(message.origin, &c);

  b.then = [&](Message& m) {
    if (m.id == 7) b.disconnect(&hub);
  };
  hub.broadcast(message);
  EXPECT_EQ(takeHeard(), "c:7b c>hub>c; b:7b c>hub>b; hub:-2 b>b>-; a:7b c>hub>a; ");
}

TEST(MessageNode, ADyingNodeTellsItsListenersThenItsSubjectsThenLeaves) {
  Recorder above("above"), first("first"), second("second");
  auto node = std::make_unique<Recorder>("node");
  node->connect(&above);
  first.connect(node.get());
  second.connect(node.get());
  takeHeard();
  second.then = [&](Message& m) {
    if (m.id == MSG_DESTROYED) second.disconnect(m.sender);
  };
  node.reset();
  EXPECT_EQ(takeHeard(),
            "second:-3b node>node>second; first:-3b node>node>first; above:-2 node>node>-; ");
  EXPECT_EQ(above.listenerCount() + first.subjectCount() + second.subjectCount(), 0);
}

TEST(MessageNode, CopyConnectionsTakesTheSamePlaceAndLeavesTheOther) {
  Recorder node("node"), other("other"), s1("s1"), s2("s2"), l1("l1"), l2("l2"), old("old"),
      old2("old2");
  node.connect(&old);
  for (Recorder* listener : {&old, &old2}) listener->connect(&node);
  for (Recorder* subject : {&s1, &s2}) other.connect(subject);
  for (Recorder* listener : {&l1, &l2}) listener->connect(&other);
  takeHeard();
  node.copyConnections(&other);
  EXPECT_EQ(takeHeard(),
            "old:-2 node>node>-; node:-2 old2>old2>-; node:-2 old>old>-; node:-1 l1>l1>-; node:-1 "
            "l2>l2>-; "
            "s1:-1 node>node>-; s2:-1 node>node>-; ");
  for (Recorder* n : {&node, &other}) {
    EXPECT_TRUE(n->subject(0) == &s1 && n->subject(1) == &s2 && n->subjectCount() == 2);
    EXPECT_TRUE(n->listener(0) == &l1 && n->listener(1) == &l2 && n->listenerCount() == 2);
  }
  EXPECT_EQ(old.subjectCount() + old.listenerCount(), 0);
}
