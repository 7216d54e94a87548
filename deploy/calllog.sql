-- The call-log database as a fresh installation has it. The one row of
-- flags is written by the enquiry form; while the table is empty the form
-- appears at every start.
CREATE TABLE flags (show_reg_form INTEGER);
