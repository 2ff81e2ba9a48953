// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Id -----------------------------------------------------------------------------------------

Id::Id( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Id::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Pair ---------------------------------------------------------------------------------------

Pair::Pair( Id id, Corvo::String text, bool on, Vok::Seconds at )
      : id_( id ),
        text_( std::move( text ) ),
        on_( on ),
        at_( at )
{
}

Pair::Pair( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Pair::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

// ---- Point --------------------------------------------------------------------------------------

Point::Point( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Point::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

} // namespace Test
