// The small entity of BenchModel.vok and its folders as one would write them by hand.
#pragma once

#include <memory>
#include <string>

namespace Bench {

struct PlainItem {
   explicit PlainItem( const std::string & itsName, void * itsParent = nullptr )
         : name( itsName ),
           parent( itsParent )
   {
   }
   std::string name;
   void * parent;
   bool active = false;
};

/// `Map` is the map that holds children by name.
template< template< class > class Map > struct PlainFolder {
   explicit PlainFolder( const std::string & itsName, void * itsParent = nullptr )
         : name( itsName ),
           parent( itsParent )
   {
   }
   std::string name;
   void * parent;
   Map< std::shared_ptr< PlainItem > > items;
   Map< std::shared_ptr< PlainFolder > > folders;
};

} // namespace Bench
