select p.a from proc() p
