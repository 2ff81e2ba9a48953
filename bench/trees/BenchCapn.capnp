# The trees as messages of Cap'n Proto. Members carry their keys.
@0xb1a6c1f0d3a55e21;

using Cxx = import "/capnp/c++.capnp";
$Cxx.namespace( "BenchCapn" );

struct AccessList {
   seqno @0 :UInt32;
   name @1 :Text;
   type @2 :UInt8;
}

struct Mirror {
   session @0 :Text;
   initialCopy @1 :UInt16;
   selector @2 :UInt8;
   interval @3 :UInt16;
}

struct Group {
   name @0 :Text;
   seqno @1 :UInt32;
   ip @2 :AccessList;
   ip6 @3 :AccessList;
   mirror @4 :Mirror;
   exporters @5 :List( Text );
}

struct Collector {
   host @0 :Text;
   port @1 :UInt16;
}

struct Exporter {
   name @0 :Text;
   localIntf @1 :Text;
   mtu @2 :UInt16 = 9152;
   dscp @3 :UInt8;
   templateInterval @4 :UInt32 = 3600000;
   collectors @5 :List( Collector );
}

struct Tracker {
   name @0 :Text;
   exporters @1 :List( Exporter );
   groups @2 :List( Group );
   inactiveTimeout @3 :UInt32 = 15000;
   activeInterval @4 :UInt32 = 300000;
   flowTableSize @5 :UInt32 = 153600;
   tcpStates @6 :Bool;
}

struct Config {
   trackers @0 :List( Tracker );
   enabled @1 :Bool;
   sampleRate @2 :UInt32 = 1048576;
}

struct CollectorStatus {
   host @0 :Text;
   reason @1 :UInt8;
   active @2 :Bool;
}

struct Reason {
   family @0 :UInt8;
   reason @1 :UInt8;
}

struct ExporterStatus {
   name @0 :Text;
   reasons @1 :List( Reason );
   active @2 :Bool;
   collectors @3 :List( CollectorStatus );
}

struct TrackerStatus {
   name @0 :Text;
   reason @1 :UInt8;
   active @2 :Bool;
   exporters @3 :List( ExporterStatus );
}

struct Status {
   trackers @0 :List( TrackerStatus );
}
