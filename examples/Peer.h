// Two processes that hold a replica of each other's tree, over one connection.
#pragma once

#include "StreamSocket.h"

#include "Vok/Vok.h"
#include "store/Framing.h"

/// A connection on which this side's tree goes out as batches and the other side's comes in. It
/// begins with whole trees, so it does not matter what either side knew before.
class Peer {
 public:
   /// The trees outlive the connection. Sends nothing yet.
   Peer( StreamSocket socket, Vok::EntityVokNboAttrLogSa & own,
         Vok::EntityVokNboAttrLogReader & other );

   /// For poll(2): readable when receive() does not wait.
   int descriptor() const noexcept { return socket_.descriptor(); }

   /// Sends what is pending of the own tree, if anything is.
   void send();

   /// Waits for bytes and reads the batches that they complete: how many, or -1 where the other
   /// side has gone.
   int receive();

 private:
   StreamSocket socket_;
   Vok::EntityVokNboAttrLogSa & own_;
   Vok::EntityVokNboAttrLogReader & other_;
   Vok::Store::FrameReader frames_;
};
