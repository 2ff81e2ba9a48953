// The peers of Vok::HashMap2018.
#pragma once

#include <absl/container/flat_hash_map.h>
#include <absl/container/node_hash_map.h>
#include <boost/unordered/unordered_flat_map.hpp>

#include <unordered_map>

namespace Bench {

/// Calls f.operator()< Map >( name ) with each of them.
template< class Key, class Value, class F > void eachHashMap( F f )
{
   f.template operator()< absl::flat_hash_map< Key, Value > >( "absl-flat" );
   f.template operator()< absl::node_hash_map< Key, Value > >( "absl-node" );
   f.template operator()< boost::unordered_flat_map< Key, Value > >( "boost-flat" );
   f.template operator()< std::unordered_map< Key, Value > >( "std" );
}

} // namespace Bench
