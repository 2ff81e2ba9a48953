// The trees that are written and read, as plain structures: a configuration and a status of flow
// tracking. They are what the contenders' trees are made of and compared with, and those of the
// contender who does all by hand. Of the data model's attributes they have those that are used.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace Bench::Trees {

template< class T > using Named = std::unordered_map< std::string, T >;

struct AccessList {
   std::uint32_t seqno = 0;
   std::string name;
   std::uint8_t type = 0;
   bool operator==( const AccessList & ) const = default;
};

struct Mirror {
   std::string session;
   std::uint16_t initialCopy = 0;
   std::uint8_t selector = 0;
   std::uint16_t interval = 0;
   bool operator==( const Mirror & ) const = default;
};

struct Group {
   std::uint32_t seqno = 0;
   AccessList ip;
   AccessList ip6;
   Mirror mirror;
   std::unordered_set< std::string > exporters;
   bool operator==( const Group & ) const = default;
};

struct Exporter {
   std::string localIntf;
   std::uint16_t mtu = 9152;
   std::uint8_t dscp = 0;
   std::uint32_t templateInterval = 3'600'000;
   Named< std::uint16_t > collectors; // the port of each host
   bool operator==( const Exporter & ) const = default;
};

struct Tracker {
   Named< Exporter > exporters;
   Named< Group > groups;
   std::uint32_t inactiveTimeout = 15'000;
   std::uint32_t activeInterval = 300'000;
   std::uint32_t flowTableSize = 153'600;
   bool tcpStates = false;
   bool operator==( const Tracker & ) const = default;
};

struct Config {
   Named< Tracker > trackers;
   bool enabled = false;
   std::uint32_t sampleRate = 1'048'576;
   bool operator==( const Config & ) const = default;
};

struct CollectorStatus {
   std::uint8_t reason = 0;
   bool active = false;
   bool operator==( const CollectorStatus & ) const = default;
};

struct ExporterStatus {
   std::unordered_map< std::uint8_t, std::uint8_t > reasons; // by address family
   bool active = false;
   Named< CollectorStatus > collectors;
   bool operator==( const ExporterStatus & ) const = default;
};

struct TrackerStatus {
   std::uint8_t reason = 0;
   bool active = false;
   Named< ExporterStatus > exporters;
   bool operator==( const TrackerStatus & ) const = default;
};

struct Status {
   Named< TrackerStatus > trackers;
   bool operator==( const Status & ) const = default;
};

/// A configuration of so many trackers, each like those of a switch: one or two exporters, one or
/// two groups.
Config configOf( std::size_t trackers );

/// A status of so many entities: trackers with an exporter each, and that with a collector.
Status statusOf( std::size_t entities );

/// The entities of a tree, its root among them.
std::size_t entitiesOf( const Config & config );
std::size_t entitiesOf( const Status & status );

/// What each contender has: `Codec< Contender, Tree >`, in a file of its own, with
///    Codec( const Tree & )      makes its own tree of these data
///    encode()                   writes it into its bytes, anew
///    decode()                   reads the bytes into a new tree, which is destroyed
///    data()                     the data of a tree that is read from the bytes
///    bytes()                    how many
/// `codecs` says what each file makes of it.
template< class Tree > struct Codecs {
   std::function< void() > encode;
   std::function< void() > decode;
   std::function< Tree() > data;
   std::function< std::size_t() > bytes;
};

template< class Codec, class Tree > Codecs< Tree > codecsOf( const Tree & tree )
{
   const auto codec = std::make_shared< Codec >( tree );
   return { [ codec ] { codec->encode(); }, [ codec ] { codec->decode(); },
      [ codec ] { return codec->data(); }, [ codec ] { return codec->bytes(); } };
}

/// The contenders, each for both trees.
Codecs< Config > vok( const Config & config );
Codecs< Status > vok( const Status & status );
Codecs< Config > byHand( const Config & config );
Codecs< Status > byHand( const Status & status );
Codecs< Config > copied( const Config & config );
Codecs< Status > copied( const Status & status );
Codecs< Config > protobuf( const Config & config );
Codecs< Status > protobuf( const Status & status );
Codecs< Config > protobufArena( const Config & config );
Codecs< Status > protobufArena( const Status & status );
Codecs< Config > capnProto( const Config & config );
Codecs< Status > capnProto( const Status & status );
Codecs< Config > flatBuffers( const Config & config );
Codecs< Status > flatBuffers( const Status & status );

} // namespace Bench::Trees
