// Texts in columns.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace Flowtrack {

/// Rows below a heading, each column as wide as what is in it.
class Table {
 public:
   explicit Table( std::vector< std::string > heading ) : heading_( std::move( heading ) ) {}

   void add( std::vector< std::string > row ) { rows_.push_back( std::move( row ) ); }
   bool empty() const noexcept { return rows_.empty(); }

   /// Leaves out the columns in which every row is empty.
   void dropEmptyColumns();

   /// `bold`: the heading is.
   void print( std::ostream & out, bool bold ) const;

 private:
   std::vector< std::string > heading_;
   std::vector< std::vector< std::string > > rows_;
};

} // namespace Flowtrack
